#include "build/usermainfile.h"
#include "dialogbench.h"

#include <QLockFile>
#include <QtTest>

using namespace dialogtext;

namespace
{
/** Does something whenever a widget is painted. */
class PaintHook : public QObject
{
public:
    PaintHook(QWidget& p_widget, std::function<void()> p_do) : m_do(std::move(p_do))
    {
        p_widget.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::Paint) {
            m_do();
        }
        return false;
    }

private:
    std::function<void()> m_do;
};
} // namespace

/** The picture of computer, cable and robot, with the program's own pictures. */
class BuildDialogPictureTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DialogBench> m_bench;

    /** True if a dialog shows a picture, where it stands in nobody's way. */
    bool shows(const char* p_name, const buildDialog& p_dialog) const
    {
        const auto& scene = *p_dialog.findChild<QLabel*>(QStringLiteral("scene"));
        const QImage expected(QStringLiteral(":/download/%1.png").arg(QLatin1String(p_name)));
        const QPixmap shown = scene.pixmap(Qt::ReturnByValue);
        return !expected.isNull() && scene.isVisible() && scene.size() == expected.size() &&
               shown.toImage() == QPixmap::fromImage(expected).toImage();
    }

    bool shows(const char* p_name) const { return shows(p_name, m_bench->dialog()); }

private slots:
    void init()
    {
        m_bench = std::make_unique<DialogBench>();
        m_bench->setCompiler(DialogBench::linking());
    }
    void cleanup() { m_bench.reset(); }

    void whileItCompilesTheComputerWorks()
    {
        m_bench->setCompiler("exec sleep 600\n");
        m_bench->build([&] { QVERIFY(shows("compiling")); });
    }

    void whileAnotherWindowCompilesTheComputerWaits()
    {
        QLockFile other(kitLockPath());
        QVERIFY(other.lock());
        m_bench->build([&] {
            QVERIFY(shows("waiting"));
            other.unlock();
            QTRY_VERIFY(shows("done"));
        });
    }

    void aFailedCompileIsMarkedOnTheComputer()
    {
        m_bench->setCompiler("exit 1\n");
        m_bench->build([&] { QTRY_VERIFY(shows("compile-failed")); });
    }

    void whileTheControllerIsAwaitedTheCableIsUnplugged()
    {
        m_bench->setVolumes(std::vector<QString>{});
        m_bench->setPause(600000);
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().statusText(), connecting);
            QVERIFY(shows("connecting"));
        });
        m_bench->updateFirmware([&] { QVERIFY(shows("connecting")); });
    }

    void withoutAControllerTheGapIsMarked()
    {
        m_bench->setVolumes(std::vector<QString>{});
        m_bench->build([&] { QTRY_VERIFY(shows("connect-failed")); });
    }

    void aProgramThatArrivedIsTickedOnTheRobot()
    {
        m_bench->build([&] { QTRY_VERIFY(shows("done")); });
    }

    void whileTheProgramIsSentTheCableHasArrows()
    {
        const auto dialog = m_bench->makeDialog();
        bool painted = false;
        const PaintHook hook(*dialog->findChild<QLabel*>(QStringLiteral("scene")),
                             [&] { painted = painted || shows("sending", *dialog); });
        DialogBench::build(*dialog, "car1", 0, [&] { QTRY_VERIFY(shows("done", *dialog)); });
        QVERIFY(painted);
    }

    void aProgramThatDidNotArriveIsMarkedOnTheRobot()
    {
        m_bench->setVolumes(std::vector<QString>{m_bench->onController("gone")});
        m_bench->build([&] { QTRY_VERIFY(shows("copy-failed")); });
    }

    void thePictureLeavesTheWordsFree()
    {
        const auto dialog = m_bench->makeDialog();
        const auto& scene = *dialog->findChild<QLabel*>(QStringLiteral("scene"));
        const Shown shown(*dialog);
        for (const char* name : {"waiting", "compiling", "connecting", "sending", "done",
                                 "compile-failed", "connect-failed", "copy-failed"}) {
            const QImage image(QStringLiteral(":/download/%1.png").arg(QLatin1String(name)));
            QVERIFY(!image.isNull());
            const bool reason = qstrcmp(name, "compile-failed") == 0;
            QRect drawn;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    if (qAlpha(image.pixel(x, y)) > 0) {
                        const QPoint at = scene.pos() + QPoint(x, y);
                        QVERIFY2(!shown.icon->geometry().contains(at) &&
                                     !shown.progress->geometry().contains(at) &&
                                     !shown.button->geometry().contains(at) &&
                                     !(reason && shown.reason->geometry().contains(at)) &&
                                     !shown.title->geometry().contains(at),
                                 name);
                        drawn |= QRect(at, QSize(1, 1));
                    }
                }
            }
            QVERIFY(drawn.width() > 300);
        }
    }

    void theTitleIsNoBoxInABox()
    {
        const auto dialog = m_bench->makeDialog();
        Shown(*dialog).title->setText(QString());
        const QImage image = dialog->grab().toImage();
        const QRgb band = image.pixel(8, 20);
        for (int x = 8; x < 392; ++x) {
            for (int y = 4; y < 42; ++y) {
                // What smooth scaling rounds.
                const QRgb pixel = image.pixel(x, y);
                QVERIFY(qAbs(qRed(pixel) - qRed(band)) + qAbs(qGreen(pixel) - qGreen(band)) +
                            qAbs(qBlue(pixel) - qBlue(band)) <=
                        2);
            }
        }
    }

    void noPixelOfTheWindowIsHalfOfIt()
    {
        const auto dialog = m_bench->makeDialog();
        const QImage image(QStringLiteral(":/xiazaitankuang-400x210.png"));
        QCOMPARE(image.size(), dialog->size());
        const QRegion shape = dialog->mask();
        int outside = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const bool inside = shape.contains(QPoint(x, y));
                QCOMPARE(qAlpha(image.pixel(x, y)), inside ? 255 : 0);
                outside += inside ? 0 : 1;
            }
        }
        // Four round corners.
        QVERIFY2(60 < outside && outside < 400, qPrintable(QString::number(outside)));
    }
};

QTEST_MAIN(BuildDialogPictureTest)
#include "builddialogpicturetest.moc"
