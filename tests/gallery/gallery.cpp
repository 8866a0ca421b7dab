#include "base/recentfiles.h"
#include "base/systemlanguage.h"
#include "build/dialogbench.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/choosers.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/graphicsitem_param.h"
#include "sheets.h"
#include "shell/appearance.h"
#include "shell/interfacelanguage.h"
#include "shell/windowbench.h"
#include "update/dialoghands.h"
#include "update/updatefiles.h"
#include "update/updateserver.h"
#include "update/updateservice.h"

#include <QDir>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QTextBrowser>
#include <QTranslator>

namespace
{
/** Takes the pictures: of the whole screen, numbered in the order in which they are taken. */
class Camera
{
public:
    explicit Camera(const QString& p_folder) : m_folder(p_folder) { QDir().mkpath(p_folder); }

    void shoot(const QString& p_name)
    {
        // What is painted late, and the window manager's own part.
        QTest::qWait(60);
        const QString name =
            QStringLiteral("%1 %2.png").arg(++m_count, 3, 10, QLatin1Char('0')).arg(p_name);
        if (!QGuiApplication::primaryScreen()->grabWindow(0).save(m_folder.filePath(name))) {
            qFatal("The picture can't be stored.");
        }
    }
    /** While something is open that has an event loop of its own; it is closed behind that. */
    template <class Open> void shootDuring(const QString& p_name, Open p_open)
    {
        const int count = m_count;
        QTimer soon;
        soon.setInterval(300);
        QObject::connect(&soon, &QTimer::timeout, &soon, [this, p_name, &soon] {
            if (!QApplication::activePopupWidget() && !QApplication::activeModalWidget()) {
                return;
            }
            soon.stop();
            shoot(p_name);
            while (QWidget* open = QApplication::activePopupWidget()) {
                open->close();
            }
            QWidget* dialog = QApplication::activeModalWidget();
            if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
                // No, cancel, or the only one: some questions don't go in another way.
                QTest::mouseClick(box->buttons().last(), Qt::LeftButton);
            } else if (dialog) {
                dialog->close();
            }
        });
        soon.start();
        p_open();
        while (m_count == count) {
            QTest::qWait(20);
        }
    }

private:
    QDir m_folder;
    int m_count = 0;
};

/** Brings the real window into all its states, by its controls and by drops on its canvas. */
class Tour
{
public:
    explicit Tour(Camera& p_camera) : m_camera(p_camera), m_hands(*m_window.view())
    {
        m_window.showMaximized();
        if (!QTest::qWaitForWindowActive(&m_window)) {
            qFatal("The window doesn't become active.");
        }
        QTest::qWait(300);
    }
    ~Tour() { documentModified = false; }
    Q_DISABLE_COPY(Tour)

    void walk()
    {
        showPalette();
        showBlocks();
        showLoops();
        showCopies();
        showDrags();
        showCode();
        showMenus();
        showMessages();
        showUpdates();
        showEditor();
    }

private:
    TzProgramView& view() { return *m_window.view(); }
    TzBlockWidget& palette() { return *m_window.blockWidget(); }
    TzToolBar& bar() { return *m_window.toolBar(); }

    void startAnew()
    {
        documentModified = false;
        m_window.OnNewFile();
        view().zoomView(0);
        view().mainBlock()->setPos(view().mapToScene(40, view().viewport()->height() / 3));
    }
    /** Drops a block with its upper left corner at a scene point. */
    supermodule* put(int p_id, const QPointF& p_at)
    {
        const std::unique_ptr<supermodule> sample(createModuleFromId(p_id));
        // The hand holds it by the middle of its top edge, in pixels of the view.
        const int half = static_cast<int>(sample->boundingRect().width()) / 2;
        return m_hands.drop(p_id, view().mapToScene(view().mapFromScene(p_at) + QPoint(half, 0)));
    }
    supermodule* behind(const supermodule* p_block, int p_id)
    {
        return put(p_id, QPointF(p_block->sceneBoundingRect().right() + 10, p_block->y() + 10));
    }
    supermodule* into(const supermodule* p_loop, int p_id)
    {
        return put(p_id,
                   p_loop->scenePos() + p_loop->connectorRect(LeftLink).center() - QPointF(0, 10));
    }
    void chain(std::initializer_list<int> p_ids)
    {
        for (const int id : p_ids) {
            behind(view().mainBlock()->lastOf(), id);
        }
    }
    void clickAt(const QPointF& p_scenePos) { m_hands.click(p_scenePos); }

    void showPalette();
    void showBlocks();
    void showLoops();
    void showCopies();
    void showDrags();
    void showCode();
    void showMenus();
    void showMessages();
    void showUpdates();
    void showEditor();

    Camera& m_camera;
    MainWindow m_window;
    CanvasHands m_hands;
};

void Tour::showPalette()
{
    startAnew();
    m_camera.shoot(QStringLiteral("start"));
    for (int tab = 0; tab < palette().folders().size(); ++tab) {
        QTest::mouseClick(palette().folders().at(tab), Qt::LeftButton);
        m_camera.shoot(QStringLiteral("tab %1").arg(tab + 1));
    }
}

void Tour::showBlocks()
{
    // Each block alone, with each of its buttons pressed; every chooser once.
    QSet<QString> seen;
    for (const BlockRecord& record : blockRecords()) {
        if (record.category < 0) {
            continue;
        }
        startAnew();
        supermodule* block = behind(view().mainBlock(), record.id);
        view().viewport()->repaint();
        for (int i = 0; i < block->buttonCount(); ++i) {
            const QRectF button = block->buttonRect(i);
            clickAt(block->scenePos() + button.center());
            QTest::qWait(20);
            const graphicsItem_Param* popUp = graphicsItem_Param::existing();
            QString what;
            if (popUp && popUp->isVisible()) {
                what = QStringLiteral("pop-up %1 by %2")
                           .arg(popUp->boundingRect().width())
                           .arg(popUp->boundingRect().height());
            }
            if (palette().isChoosing() && palette().panel()) {
                what = QStringLiteral("panel");
            }
            const QImage strip = palette().grab().toImage();
            const QString key =
                what + QString::number(qHashBits(strip.constBits(), size_t(strip.sizeInBytes())));
            if (!what.isEmpty() && !seen.contains(key)) {
                seen.insert(key);
                m_camera.shoot(QStringLiteral("%1, block %2").arg(what).arg(record.id));
            }
            QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::NoModifier,
                              QPoint(view().viewport()->width() - 30, 20));
        }
    }
    int category = -1;
    for (const BlockRecord& record : blockRecords()) {
        const std::unique_ptr<supermodule> sample(createModuleFromId(record.id));
        if (record.category < 0 || sample->hasConnector(LeftLink)) {
            continue;
        }
        if (record.category != category) {
            if (category >= 0) {
                m_camera.shoot(QStringLiteral("blocks of category %1").arg(category));
            }
            category = record.category;
            startAnew();
        }
        behind(view().mainBlock()->lastOf(), record.id);
    }
    m_camera.shoot(QStringLiteral("blocks of category %1").arg(category));
}

void Tour::showLoops()
{
    for (const BlockRecord& record : blockRecords()) {
        const std::unique_ptr<supermodule> sample(createModuleFromId(record.id));
        if (!sample->hasConnector(LeftLink)) {
            continue;
        }
        const auto shoot = [&](const char* p_state) {
            m_camera.shoot(QStringLiteral("loop %1 %2").arg(record.id).arg(p_state));
        };
        startAnew();
        supermodule* loop = behind(view().mainBlock(), record.id);
        shoot("empty");
        into(loop, 104);
        shoot("filled");
        behind(loop->left(), record.id);
        if (supermodule* inner = loop->left()->next()) {
            into(inner, 900);
        }
        if (loop->hasConnector(NextLink)) {
            behind(loop, 303);
        }
        shoot("nested");
    }
}

void Tour::showCopies()
{
    startAnew();
    chain({104, 301, 801});
    supermodule* loop = view().mainBlock()->next()->next();
    into(loop, 103);
    put(105, view().mainBlock()->scenePos() + QPointF(40, 260));
    m_camera.shoot(QStringLiteral("loose block"));
    clickAt(view().mainBlock()->next()->scenePos() + QPointF(30, 20));
    m_hands.key(Qt::Key_C, Qt::ControlModifier);
    m_camera.shoot(QStringLiteral("copied chain"));
    QCursor::setPos(view().viewport()->mapToGlobal(
        m_hands.at(view().mainBlock()->scenePos() + QPointF(260, 260))));
    m_hands.key(Qt::Key_V, Qt::ControlModifier);
    m_camera.shoot(QStringLiteral("pasted chain"));
}

void Tour::showDrags()
{
    startAnew();
    chain({104, 801});
    const supermodule* first = view().mainBlock()->next();
    m_hands.dragOver(306, first->scenePos() + QPointF(180, 10));
    m_camera.shoot(QStringLiteral("preview of a link"));
    m_hands.leave();
    const QPointF grip = first->scenePos() + QPointF(30, 20);
    m_hands.press(grip);
    m_hands.move(grip + QPointF(0, 40));
    m_camera.shoot(QStringLiteral("drag, bin closed"));
    const QPointF below = view().mapToScene(200, view().viewport()->height() + 60);
    m_hands.move(below);
    m_camera.shoot(QStringLiteral("drag, bin open"));
    m_hands.release(below);
    for (const int steps : {-1, 1}) {
        startAnew();
        chain({104, 801, 301});
        for (int i = 0; i < 5; ++i) {
            view().zoomView(steps);
        }
        m_camera.shoot(steps < 0 ? QStringLiteral("small") : QStringLiteral("large"));
    }
}

void Tour::showCode()
{
    startAnew();
    chain({100, 104, 301});
    supermodule* loop = view().mainBlock()->lastOf();
    into(loop, 306);
    behind(loop, 800);
    bar().OnShowCode();
    QTest::qWait(50);
    const QPoint over = m_hands.at(loop->scenePos() + QPointF(20, 20));
    QTest::mouseMove(view().viewport(), over);
    QMouseEvent move(QEvent::MouseMove, over, view().viewport()->mapToGlobal(over), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(view().viewport(), &move);
    m_camera.shoot(QStringLiteral("code, a loop is lit"));
    QTextBrowser& pane = *m_window.codeBrowser();
    QTextCursor cursor = pane.document()->find(QStringLiteral("wait"));
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, Qt::NoModifier,
                      pane.cursorRect(cursor).center());
    m_camera.shoot(QStringLiteral("code, a block is pointed at"));
    bar().OnShowPythonCode();
    m_camera.shoot(QStringLiteral("code, Python"));
    bar().OnShowPythonCode();
}

void Tour::showMenus()
{
    startAnew();
    chain({104});
    for (const bool onBlock : {true, false}) {
        const QPointF at = view().mainBlock()->next()->scenePos() +
                           (onBlock ? QPointF(30, 20) : QPointF(300, 260));
        m_camera.shootDuring(onBlock ? QStringLiteral("menu of a block")
                                     : QStringLiteral("menu of the canvas"),
                             [&] { m_hands.press(at, Qt::RightButton); });
    }
    const QList<QPushButton*> buttons =
        bar().findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly);
    // One of them with a name as long as they get.
    for (const char* name :
         {"square", "happy cat",
          "a program with a name that says all that it does, from first to last"}) {
        putRecentFileFirst(
            QDir::home().filePath(QLatin1String("Tiler/") + QLatin1String(name) + ".tlrx"));
    }
    bar().OnUpdateRecentMenuSignal();
    for (QPushButton* button : buttons) {
        const QString name =
            button->toolTip().isEmpty() ? QStringLiteral("more") : button->toolTip();
        if (button->menu()) {
            m_camera.shootDuring(QStringLiteral("menu ") + name,
                                 [&] { QTest::mouseClick(button, Qt::LeftButton); });
        }
    }
    const QPoint middle = buttons.first()->rect().center();
    QCursor::setPos(buttons.first()->mapToGlobal(middle));
    QTest::qWait(100);
    QHelpEvent tip(QEvent::ToolTip, middle, buttons.first()->mapToGlobal(middle));
    QApplication::sendEvent(buttons.first(), &tip);
    QTest::qWait(300);
    m_camera.shoot(QStringLiteral("tool tip"));
    bar().showFirmwareNotice();
    m_camera.shoot(QStringLiteral("notice"));
    bar().removeInfo();
}

void Tour::showMessages()
{
    const QTemporaryDir folder;
    startAnew();
    documentModified = true;
    m_camera.shootDuring(QStringLiteral("question about changes"), [&] { m_window.OnNewFile(); });
    documentModified = false;
    const QString bad = folder.filePath(QStringLiteral("bad.tlrx"));
    DialogBench::write(bad, "no project");
    m_camera.shootDuring(QStringLiteral("unreadable project"), [&] { m_window.openPath(bad); });
    m_camera.shootDuring(QStringLiteral("missing project"),
                         [&] { m_window.openPath(folder.filePath(QStringLiteral("none.tlrx"))); });
    m_camera.shootDuring(QStringLiteral("main program is not deleted"), [&] { view().OnDelSub(); });
    m_camera.shootDuring(QStringLiteral("about"), [&] { bar().OnAbout(); });
    m_camera.shootDuring(QStringLiteral("open"), [&] { m_window.OnOpenFile(); });
    m_camera.shootDuring(QStringLiteral("save"), [&] { m_window.OnSaveFile(); });
}

void Tour::showEditor()
{
    m_window.OnEditActions();
    QTest::qWait(300);
    m_camera.shoot(QStringLiteral("action editor"));
}

void Tour::showUpdates()
{
    UpdateService service;
    if (!service.start()) {
        qFatal("The update service doesn't start.");
    }
    const QString large = QStringLiteral("large");
    service.addFile(large, QByteArray(400000, 'x'));
    setUpdateServer(service.base());
    const char program[] = "program.json";
    UpgradeDialog dialog(&m_window);
    const DialogHands hands(dialog);
    const auto waitFor = [](const std::function<bool()>& p_done) {
        if (!QTest::qWaitFor(p_done, 20000)) {
            qFatal("The update dialog doesn't get there.");
        }
    };
    const auto shoot = [&](const char* p_name) {
        m_camera.shoot(QLatin1String("update, ") + QLatin1String(p_name));
    };
    const auto check = [&](const QByteArray& p_answer) {
        service.setAnswer(program, p_answer);
        dialog.startCheck();
        const QString checking = hands.text->text();
        waitFor([&] { return hands.text->text() != checking; });
        dialog.show();
        QTest::qWait(200);
    };

    // Hidden unless there is something to say, but these are states of it, too.
    service.setAnswer(program, "{}");
    dialog.startCheck();
    dialog.show();
    shoot("checking");
    check("<html>");
    shoot("a broken answer");
    check(offer("1.1.2", service.url(large)));
    shoot("nothing newer");
    check(offer("9.0", service.slowUrl(large)));
    shoot("found");
    DialogHands::press(hands.ok);
    waitFor([&] { return hands.progress->isVisible() && hands.progress->value() >= 30; });
    shoot("downloading");
    DialogHands::press(hands.cancel);
    const QByteArray notes = QByteArray("- A robot that turns on the spot\\n").repeated(30);
    check("{\"state\":1,\"appversion\":\"9.1\",\"appurl\":\"" + service.missingUrl().toUtf8() +
          "\",\"content\":\"" + notes + "\",\"en_content\":\"" + notes + "\"}");
    shoot("long notes");
    DialogHands::press(hands.ok);
    waitFor([&] { return hands.text->text().size() < 100; });
    shoot("download failed");
    check(offer("9.2", service.slowUrl(large), "\"1\""));
    waitFor([&] { return hands.progress->isVisible() && hands.progress->value() >= 30; });
    shoot("forced");
    dialog.close();

    service.removeAnswer(program);
    service.addFile(QStringLiteral("firmware"), QByteArray(2000, 'x'));
    service.setAnswer("firmware.json", offer("9.0", service.url(QStringLiteral("firmware"))));
    m_camera.shootDuring(QStringLiteral("update, firmware has arrived"),
                         [&] { dialog.startCheck(); });
    QFile::remove(installedFirmwareFile());
}

void showBuilds(Camera& p_camera)
{
    DialogBench bench;
    const auto build = [&](const char* p_name, const QString& p_end) {
        const auto dialog = bench.makeDialog();
        const Shown shown(*dialog);
        DialogBench::build(*dialog, QStringLiteral("program"), 0, [&] {
            DialogBench::runUntil([&] { return p_end.isEmpty() || shown.statusText() == p_end; });
            p_camera.shoot(QLatin1String("build, ") + QLatin1String(p_name));
        });
    };
    const auto said = [](const QString& p_source) {
        return QCoreApplication::translate("buildDialog", p_source.toUtf8());
    };
    bench.setCompiler("sleep 5\n");
    build("compiling", QString());
    bench.setCompiler("sleep 5\n");
    {
        const auto first = bench.makeDialog();
        DialogBench::build(*first, QStringLiteral("program"), 0,
                           [&] { build("waits for another window", said(dialogtext::waiting)); });
    }
    bench.setCompiler("echo error >&2; exit 2\n");
    build("failed", said(dialogtext::compileFailed));
    QFile::remove(bench.inMakeFolder(QStringLiteral("make.exe")));
    build("failed without tools", said(dialogtext::compileFailed));
    bench.setCompiler(DialogBench::linking());
    build("done", said(dialogtext::downloaded));
    bench.setVolumes(std::vector<QString>());
    build("looks for the controller", said(dialogtext::connecting));
    bench.setVolumes(std::vector<QString>{QStringLiteral("/proc")});
    build("download failed", said(dialogtext::downloadFailed));
}
} // namespace

/** gallery <folder>: takes the pictures in the system's language, and puts them on sheets. */
int main(int argc, char** argv)
{
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 2) {
        qCritical("gallery <folder>");
        return 2;
    }
    setUpAppearance();
    QTranslator ofQt;
    QTranslator translator;
    setUpInterface(systemLanguageCode(), translator, ofQt);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    Camera camera(folder);
    Tour(camera).walk();
    showBuilds(camera);
    makeSheets(folder);
    return 0;
}
