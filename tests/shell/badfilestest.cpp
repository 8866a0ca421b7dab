#include "actions/model/actionimage.h"
#include "base/recentfiles.h"
#include "project/projectfile.h"
#include "support/canvas/documentpicture.h"
#include "support/system/answers.h"
#include "support/system/datatable.h"
#include "support/system/smalldisk.h"
#include "support/system/unprivileged.h"
#include "windowbench.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include <sys/stat.h>

namespace
{
/** The ways by which a project comes into the window. */
enum class Way { Dialog, CommandLine, RecentList, Drop };

/** What may be wrong with a project, as the window tells it. */
enum class Fault { NoProject, WrongTag, CutOff, Folder, Pipe, Device, NoRights, TooLarge, Missing };

const char s_question[] = "保存|文件已修改，是否保存";
const char s_openFailed[] = "打开文件|文件打开失败";
const char s_checkFailed[] = "打开文件|文件校验错误";
const char s_missing[] = "提示|文件不存在，是否在列表中删除？";
} // namespace

Q_DECLARE_METATYPE(Way)
Q_DECLARE_METATYPE(Fault)

/**
 * The window before files that it can't open and places that it can't save to: it says what it has
 * to say, and the document is as it was.
 */
class BadFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        recentFiles.clear();
        // A saved project, and changes since then.
        m_bench->add(103);
        ActionImage image;
        image.page(3)->nextPage = 7;
        QVERIFY(m_bench->canvas().saveFile(path("mine.tlrx"), image.bytes()));
        documentModified = false;
        m_bench->window.openPath(path("mine.tlrx"));
        m_bench->add(101);
        m_bench->add(102);
        m_bench->canvas().deleteModule(m_bench->canvas().mainBlock()->lastOf());
        QVERIFY(documentModified);
        QVERIFY(m_bench->window.isWindowModified());
    }

    void cleanup()
    {
        m_bench.reset();
        QVERIFY(moduleMap.isEmpty());
    }

    void aBadFileIsToldAndTheDocumentStays_data()
    {
        columns<Way, Fault>("way", "fault");
        const QVector<QPair<const char*, Way>> ways{{"dialog", Way::Dialog},
                                                    {"command line", Way::CommandLine},
                                                    {"recent list", Way::RecentList},
                                                    {"drop", Way::Drop}};
        const QVector<QPair<const char*, Fault>> faults{{"no project", Fault::NoProject},
                                                        {"wrong tag", Fault::WrongTag},
                                                        {"cut off", Fault::CutOff},
                                                        {"folder", Fault::Folder},
                                                        {"pipe", Fault::Pipe},
                                                        {"device", Fault::Device},
                                                        {"no rights", Fault::NoRights},
                                                        {"too large", Fault::TooLarge},
                                                        {"missing", Fault::Missing}};
        for (const auto& way : ways) {
            for (const auto& fault : faults) {
                // The dialog itself asks again for what is no file or is missing.
                const bool isFile = fault.second != Fault::Folder && fault.second != Fault::Missing;
                if (way.second != Way::Dialog || isFile) {
                    QTest::addRow("%s, %s", way.first, fault.first) << way.second << fault.second;
                }
            }
        }
    }

    void aBadFileIsToldAndTheDocumentStays()
    {
        QFETCH(Way, way);
        QFETCH(Fault, fault);
        const QByteArray whole = readWhole(path("mine.tlrx"));
        QString message = QString::fromUtf8(s_openFailed);
        std::unique_ptr<Unprivileged> user;
        switch (fault) {
        case Fault::NoProject:
            QVERIFY(writeWhole(path(), "no project"));
            break;
        case Fault::WrongTag:
            QVERIFY(writeWhole(path(), QByteArray(whole).replace("id=\"103\"", "id=\"102\"")));
            message = QString::fromUtf8(s_checkFailed);
            break;
        case Fault::CutOff:
            QVERIFY(writeWhole(path(), whole.left(whole.size() - 1000)));
            break;
        case Fault::Folder:
            QVERIFY(QDir().mkdir(path()));
            break;
        case Fault::Pipe:
            QCOMPARE(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
            break;
        case Fault::Device:
            QVERIFY(QFile::link(QStringLiteral("/dev/zero"), path()));
            break;
        case Fault::NoRights:
            if (!Unprivileged::works()) {
                QSKIP("The rights of this user can't be given away.");
            }
            QVERIFY(writeWhole(path(), whole));
            QVERIFY(QFile::setPermissions(path(), QFileDevice::Permissions()));
            QVERIFY(Unprivileged::openToChanges(m_bench->dir.path()));
            user = std::make_unique<Unprivileged>();
            break;
        case Fault::TooLarge: {
            QFile file(path());
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.resize(qint64(1) << 40));
            break;
        }
        case Fault::Missing:
            message = QString::fromUtf8(s_missing);
            break;
        }
        const QStringList before = everything();
        QVariantList answers{No};
        QStringList said{QString::fromUtf8(s_question)};
        if (way == Way::Dialog) {
            answers << path();
            said << QStringLiteral("打开文件");
        }
        // The box about a file that can't be opened has one button; the list is left as it is.
        answers << (fault == Fault::Missing ? 1 : 0);
        said << message;
        Answers hands(answers);
        open(way, path());
        user.reset();
        QCOMPARE(Answers::said(), said);
        QVERIFY(hands.allUsed());
        QCOMPARE(everything(), before);
        QVERIFY(documentModified);
        QVERIFY(m_bench->window.isWindowModified());
        // What was done can still be taken back, and saved.
        m_bench->canvas().undoStack().undo();
        QCOMPARE(m_bench->program(), (QList<int>{0, 103, 101, 102}));
        QCOMPARE(m_bench->window.OnSaveFile(), 0);
        QVERIFY(readWhole(path("mine.tlrx")).contains("id=\"102\""));
    }

    void aMissingFileLeavesTheListWhenTheUserSaysSo()
    {
        recentFiles = QStringList{path("gone.tlrx"), path("mine.tlrx")};
        Answers hands({No, 0});
        open(Way::RecentList, path("gone.tlrx"));
        QVERIFY(hands.allUsed());
        QCOMPARE(recentFiles, QStringList{path("mine.tlrx")});
        QCOMPARE(m_bench->window.fileName(), path("mine.tlrx"));
        QVERIFY(documentModified);
    }

    void afterABadFileAGoodOneOpens()
    {
        QVERIFY(writeWhole(path(), "no project"));
        {
            Answers hands({No, 0});
            m_bench->window.openPath(path());
            QVERIFY(hands.allUsed());
        }
        Answers hands({No});
        m_bench->window.openPath(path("mine.tlrx"));
        QVERIFY(hands.allUsed());
        QCOMPARE(m_bench->program(), (QList<int>{0, 103}));
        QVERIFY(!documentModified);
        QVERIFY(!m_bench->window.isWindowModified());
        QVERIFY(!m_bench->canvas().undoStack().canUndo());
    }

    void aFailedSaveSaysNothingAndKeepsEverything_data()
    {
        QTest::addColumn<QString>("place");
        for (const char* place : {"full disk", "closed folder", "vanished folder"}) {
            QTest::newRow(place) << QString::fromLatin1(place);
        }
    }

    void aFailedSaveSaysNothingAndKeepsEverything()
    {
        QFETCH(QString, place);
        SmallDisk disk("size=128k");
        std::unique_ptr<Unprivileged> user;
        const bool isDisk = place == QLatin1String("full disk");
        const bool isClosed = place == QLatin1String("closed folder");
        if (isDisk && !disk.isMounted()) {
            QSKIP("This user can't mount a disk.");
        }
        if (isClosed && !Unprivileged::works()) {
            QSKIP("The rights of this user can't be given away.");
        }
        const QString folder = isDisk ? disk.path() : path("folder");
        const QString file = folder + QStringLiteral("/b.tlrx");
        QVERIFY(QDir().mkpath(folder));
        {
            Answers hands({file});
            m_bench->window.OnSaveAsFile();
            QCOMPARE(m_bench->window.fileName(), file);
        }
        m_bench->add(104);
        const QByteArray old = readWhole(file);
        if (isDisk) {
            disk.fill();
        } else if (isClosed) {
            QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
            QVERIFY(Unprivileged::closeToChanges(folder));
            QVERIFY(Unprivileged::openToChanges(m_bench->dir.path()));
            user = std::make_unique<Unprivileged>();
        } else {
            QVERIFY(QDir(folder).removeRecursively());
        }

        const QStringList before = everything();
        {
            Answers none({});
            QCOMPARE(m_bench->window.OnSaveFile(), 1);
            // There is no box that would wait for an answer, either.
            QVERIFY(Answers::said().isEmpty());
        }
        QCOMPARE(everything(), before);
        // Whatever would lose the document asks first, and goes no further.
        const auto stops = [&](const std::function<void()>& p_do) {
            Answers hands({Yes});
            p_do();
            return hands.allUsed() &&
                   Answers::said() == QStringList{QString::fromUtf8(s_question)} &&
                   everything() == before;
        };
        QVERIFY(stops([this] { m_bench->window.close(); }));
        QVERIFY(m_bench->window.isVisible());
        QVERIFY(stops([this] { m_bench->window.OnNewFile(); }));
        QVERIFY(stops([this] { m_bench->window.OnOpenFile(); }));
        QVERIFY(stops([this] { m_bench->window.openPath(path("mine.tlrx")); }));
        user.reset();
        QVERIFY(documentModified);
        QVERIFY(m_bench->window.isWindowModified());
        if (place != QLatin1String("vanished folder")) {
            QCOMPARE(readWhole(file), old);
        }

        // When the place is there again, so is the way out.
        disk.empty();
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(Unprivileged::openToChanges(folder));
        if (QFileInfo::exists(file)) {
            QVERIFY(Unprivileged::openToChanges(file));
        }
        Answers hands({Yes});
        QVERIFY(m_bench->window.close());
        QVERIFY(hands.allUsed());
        QVERIFY(!documentModified);
        m_bench->window.show();
        m_bench->window.openPath(file);
        QCOMPARE(m_bench->program(), (QList<int>{0, 103, 101, 104}));
        QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), 7);
    }

    void saveAsThatFailsKeepsTheOldName()
    {
        const QStringList before = everything();
        QVERIFY(writeWhole(path("file"), QByteArray()));
        Answers hands({path("file/b.tlrx")});
        m_bench->window.OnSaveAsFile();
        QCOMPARE(everything(), before);
        QCOMPARE(m_bench->window.fileName(), path("mine.tlrx"));
        QVERIFY(documentModified);
    }

    void aProjectThatIsMadeOnTheCanvasComesBackWithItsActions()
    {
        QCOMPARE(m_bench->window.OnSaveFile(), 0);
        QVERIFY(!documentModified);
        m_bench->window.OnNewFile();
        QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), 0);
        m_bench->window.openPath(path("mine.tlrx"));
        QCOMPARE(m_bench->program(), (QList<int>{0, 103, 101}));
        QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), 7);
    }

private:
    QString path(const char* p_name = "a.tlrx") const { return m_bench->path(p_name); }
    /** Opens a file by one of the ways. */
    void open(Way p_way, const QString& p_path)
    {
        switch (p_way) {
        case Way::Dialog:
            m_bench->window.OnOpenFile();
            break;
        case Way::CommandLine:
            m_bench->window.openPath(p_path);
            break;
        case Way::RecentList:
            emit m_bench->bar().openRecentFileSignal(p_path);
            break;
        case Way::Drop: {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(p_path)});
            QDragEnterEvent enter(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton,
                                  Qt::NoModifier);
            QApplication::sendEvent(m_bench->canvas().viewport(), &enter);
            QDropEvent drop(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton,
                            Qt::NoModifier);
            QApplication::sendEvent(m_bench->canvas().viewport(), &drop);
            break;
        }
        }
    }
    /** All that the window holds: the document, its name and the action data. */
    QStringList everything()
    {
        return documentPicture(m_bench->canvas())
               << m_bench->window.fileName() << m_bench->bar().programName()
               << QString::fromLatin1(m_bench->window.document().actions().bytes().toHex());
    }

    std::unique_ptr<WindowBench> m_bench;
};

QTEST_MAIN(BadFilesTest)
#include "badfilestest.moc"
