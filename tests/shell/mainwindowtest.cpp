#include "shell/mainwindow.h"
#include "actions/editactionwindow.h"
#include "actions/model/actionimage.h"
#include "base/recentfiles.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "proj/blockpanel.h"
#include "proj/tzblockwidget.h"
#include "project/projectfile.h"
#include "shell/tztoolbar.h"
#include "support/canvas/canvasfixture.h"
#include "support/system/answers.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QScrollArea>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>

namespace
{
/** Drops a block behind the main block's chain of a shown window. */
void addBlock(MainWindow& p_window, int p_id)
{
    TzProgramView* view = p_window.view();
    const supermodule* last = view->mainBlock()->lastOf();
    const QRectF rect = last->sceneBoundingRect();
    const QPoint at = view->mapFromScene(QPointF(rect.right() + 70, last->scenePos().y() + 10));
    const std::unique_ptr<QMimeData> data(blockDrag(p_id));
    QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &enter);
    QDragMoveEvent move(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &move);
    QDropEvent drop(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &drop);
}

QList<int> program(MainWindow& p_window)
{
    return CanvasFixture::ids(p_window.view()->mainBlock());
}
} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        // The dialogs of Qt itself: those of a desktop can't be answered from here.
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        recentFiles.clear();
        m_window = std::make_unique<MainWindow>();
        m_window->resize(1280, 768);
        m_window->show();
        QApplication::processEvents();
    }

    void cleanup()
    {
        documentModified = false;
        m_window.reset();
        QVERIFY(!mainWindow);
        QVERIFY(!programView);
        QVERIFY(moduleMap.isEmpty());
        QVERIFY(rootModules.isEmpty());
    }

    void theWindowOpensOnAnEmptyProjectWithItsTitle()
    {
        QCOMPARE(m_window->windowTitle(),
                 QStringLiteral("塔勒积木编程 v1.1.2 2020-12-17:  untitled[*]"));
        QVERIFY(m_window->fileName().isEmpty());
        QCOMPARE(program(*m_window), QList<int>{0});
        QCOMPARE(mainWindow.data(), m_window.get());
        QVERIFY(!documentModified);
        const TzProgramView* view = m_window->view();
        // The main block is in sight.
        QVERIFY(view->viewport()->rect().contains(
            view->mapFromScene(view->mainBlock()->sceneBoundingRect().center())));
    }

    void thePaletteLiesBelowTheCanvasAndTheCodePaneIsHidden()
    {
        const auto globalRect = [](const QWidget* p_widget) {
            return QRect(p_widget->mapToGlobal(QPoint(0, 0)), p_widget->size());
        };
        const QRect bar = globalRect(m_window->toolBar());
        const QRect canvas = globalRect(m_window->view());
        const QRect palette = globalRect(m_window->blockWidget());
        QCOMPARE(bar.height(), 34);
        QCOMPARE(canvas.top(), bar.bottom() + 1);
        QCOMPARE(palette.top(), canvas.bottom() + 1);
        QCOMPARE(palette.height(), 236);
        QCOMPARE(canvas.width(), m_window->width());
        QVERIFY(!m_window->codeBrowser()->isVisible());
        QCOMPARE(m_window->codeBrowser()->font().pixelSize(), 12);
    }

    void noInTheQuestionAtCloseEndsAndLosesTheChange()
    {
        addBlock(*m_window, 103);
        QVERIFY(documentModified);
        QVERIFY(m_window->isWindowModified());
        Answers answers({No});
        QVERIFY(m_window->close());
        QCOMPARE(Answers::said(), QStringList{QStringLiteral("保存|文件已修改，是否保存")});
        QVERIFY(!m_window->isVisible());
    }

    void cancelInTheQuestionAtCloseKeepsTheWindow()
    {
        addBlock(*m_window, 103);
        Answers answers({Cancel});
        QVERIFY(!m_window->close());
        QVERIFY(m_window->isVisible());
        QVERIFY(documentModified);
        QCOMPARE(program(*m_window), (QList<int>{0, 103}));
    }

    void closingAnUntitledDocumentWithoutAFileNameKeepsTheWindow()
    {
        addBlock(*m_window, 103);
        Answers answers({Yes, QString()});
        QVERIFY(!m_window->close());
        QVERIFY(m_window->isVisible());
        QCOMPARE(Answers::said().last(), QStringLiteral("保存文件"));
        QVERIFY(documentModified);
    }

    void aSaveThatFailsKeepsTheWindow()
    {
        QVERIFY(m_window->view()->saveFile(path()));
        m_window->openPath(path());
        addBlock(*m_window, 103);
        // Its folder goes: there is nowhere to save to.
        QVERIFY(QDir(m_dir->path()).removeRecursively());
        Answers answers({Yes});
        QVERIFY(!m_window->close());
        QVERIFY(documentModified);
        QCOMPARE(m_window->OnSaveFile(), 1);
    }

    void savingAsksForANameOnceAndThenNoMore()
    {
        addBlock(*m_window, 103);
        {
            Answers answers({path()});
            QCOMPARE(m_window->OnSaveFile(), 0);
            QVERIFY(answers.allUsed());
        }
        QCOMPARE(m_window->fileName(), path());
        QVERIFY(!documentModified);
        QVERIFY(!m_window->isWindowModified());
        QVERIFY(m_window->windowTitle().endsWith(QStringLiteral(":  ") + path() +
                                                 QStringLiteral("[*]")));
        addBlock(*m_window, 102);
        QCOMPARE(m_window->OnSaveFile(), 0);
        QVERIFY(!documentModified);
        m_window->OnNewFile();
        QCOMPARE(program(*m_window), QList<int>{0});
        m_window->openPath(path());
        QCOMPARE(program(*m_window), (QList<int>{0, 103, 102}));
    }

    void aNameTypedWithoutTheEndingGetsIt()
    {
        Answers answers({path("car")});
        QCOMPARE(m_window->OnSaveFile(), 0);
        QCOMPARE(m_window->fileName(), path("car.tlrx"));
        QVERIFY(QFileInfo::exists(path("car.tlrx")));
    }

    void saveAsTakesTheNewName()
    {
        addBlock(*m_window, 103);
        Answers answers({path("b.tlrx"), QString()});
        m_window->OnSaveAsFile();
        QCOMPARE(Answers::said(), QStringList{QStringLiteral("Save File")});
        QCOMPARE(m_window->fileName(), path("b.tlrx"));
        QVERIFY(m_window->windowTitle().endsWith(path("b.tlrx") + QStringLiteral("[*]")));
        QVERIFY(!documentModified);
        m_window->OnSaveAsFile();
        QCOMPARE(m_window->fileName(), path("b.tlrx"));
    }

    void saveTakesTheWindowsMarkAwayAndSaveAsLeavesIt()
    {
        addBlock(*m_window, 103);
        QVERIFY(m_window->isWindowModified());
        use(QStringLiteral("a failed save"));
        QVERIFY(m_window->isWindowModified());
        use(QStringLiteral("save as"));
        QVERIFY(!documentModified);
        QVERIFY(m_window->isWindowModified());
        use(QStringLiteral("save"));
        QVERIFY(!m_window->isWindowModified());
    }

    void aSavedProjectEndsInTheActionDataAndResavingReplacesIt()
    {
        Answers answers({path()});
        QCOMPARE(m_window->OnSaveFile(), 0);
        const qint64 size = QFileInfo(path()).size();
        QVERIFY(size > ProjectTailSize);
        QCOMPARE(m_window->OnSaveFile(), 0);
        QCOMPARE(QFileInfo(path()).size(), size);
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        file.seek(size - ProjectTailSize);
        QCOMPARE(file.readAll(), ActionImage().bytes());
    }

    void openingTellsWhatWentWrong()
    {
        QFile bad(path());
        QVERIFY(bad.open(QIODevice::WriteOnly));
        bad.write("no project");
        bad.close();
        {
            Answers answers({path(), 0});
            m_window->OnOpenFile();
            QVERIFY(answers.allUsed());
            QCOMPARE(Answers::said(), (QStringList{QStringLiteral("打开文件"),
                                                   QStringLiteral("打开文件|文件打开失败")}));
        }
        QVERIFY(bad.open(QIODevice::WriteOnly));
        bad.write("<vantrel><tagCheck value=\"1\"/></vantrel>");
        bad.close();
        {
            Answers answers({0});
            m_window->openPath(path());
            QCOMPARE(Answers::said(), QStringList{QStringLiteral("打开文件|文件校验错误")});
        }
        QVERIFY(m_window->fileName().isEmpty());
        Answers answers({QString()});
        m_window->OnOpenFile();
        QVERIFY(m_window->fileName().isEmpty());
    }

    void openingLoadsProgramAndActionData()
    {
        addBlock(*m_window, 104);
        ActionImage image;
        image.page(3)->nextPage = 7;
        QVERIFY(m_window->view()->saveFile(path(), image.bytes()));
        documentModified = false;
        m_window->OnNewFile();
        QCOMPARE(program(*m_window), QList<int>{0});
        m_window->openPath(path());
        QCOMPARE(program(*m_window), (QList<int>{0, 104}));
        QCOMPARE(int(m_window->document().actions().page(3)->nextPage), 7);
        QCOMPARE(m_window->fileName(), path());
        QVERIFY(!documentModified);
    }

    void theLastBytesOfAFileAreItsActionData_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("nextPage");
        QTest::addColumn<int>("runTime");
        QTest::addColumn<bool>("modified");
        const QByteArray text = "<vantrel/>\n";
        const QByteArray longText = "<vantrel><!--" + QByteArray(57472, 'x') + "--></vantrel>\n";
        ActionImage image;
        image.page(3)->nextPage = 9;
        const QByteArray actions = image.bytes();
        QByteArray marked = actions;
        marked[5] = 1;
        QTest::newRow("behind the text") << text + actions << 9 << 50 << false;
        QTest::newRow("behind a long text") << longText + actions << 9 << 50 << false;
        QTest::newRow("with a format mark") << text + marked << 0 << 100 << false;
        QTest::newRow("none, and the file is smaller") << text << 7 << 50 << true;
        const QByteArray asLarge = text + QByteArray(57472 - text.size(), ' ');
        QTest::newRow("none, one byte too few") << asLarge.left(57471) << 7 << 50 << true;
        QTest::newRow("none, and the text is as large") << asLarge << 0 << 100 << false;
        QTest::newRow("none, and the text is larger") << longText << 0 << 100 << false;
    }

    void theLastBytesOfAFileAreItsActionData()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, nextPage);
        QFETCH(int, runTime);
        QFETCH(bool, modified);
        QFile out(path());
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(file);
        out.close();
        m_window->document().actions().page(3)->nextPage = 7;
        m_window->document().actions().setModified(true);
        m_window->openPath(path());
        QCOMPARE(m_window->fileName(), path());
        QCOMPARE(int(m_window->document().actions().page(3)->nextPage), nextPage);
        QCOMPARE(int(m_window->document().actions().step(0, 0)->runTime), runTime);
        QCOMPARE(m_window->document().actions().isModified(), modified);
    }

    void aFileThatIsRefusedLeavesTheActionData()
    {
        m_window->document().actions().page(3)->nextPage = 7;
        m_window->document().actions().setModified(true);
        for (const char* text : {"no project", "<vantrel><tagCheck value=\"1\"/></vantrel>"}) {
            QFile out(path());
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(text + ActionImage().bytes());
            out.close();
            Answers answers({0});
            m_window->openPath(path());
            QVERIFY(answers.allUsed());
            QCOMPARE(int(m_window->document().actions().page(3)->nextPage), 7);
            QVERIFY(m_window->document().actions().isModified());
        }
    }

    void openingAsksAboutUnsavedChangesFirst()
    {
        QVERIFY(m_window->view()->saveFile(path()));
        addBlock(*m_window, 104);
        {
            Answers answers({Cancel});
            m_window->openPath(path());
            QVERIFY(answers.allUsed());
        }
        QCOMPARE(program(*m_window), (QList<int>{0, 104}));
        Answers answers({No});
        m_window->openPath(path());
        QCOMPARE(program(*m_window), QList<int>{0});
    }

    void aSuffixInCapitalsIsNotOpened()
    {
        QVERIFY(m_window->view()->saveFile(path("a.TLRX")));
        addBlock(*m_window, 104);
        m_window->openPath(path("a.TLRX"));
        QCOMPARE(program(*m_window), (QList<int>{0, 104}));
        QVERIFY(m_window->fileName().isEmpty());
    }

    void codeFilesAreNotOpened()
    {
        addBlock(*m_window, 104);
        for (const char* name : {"a.tvc", "a.tvpy", "a.txt", "", "tlrx"}) {
            m_window->openPath(QLatin1String(name));
            QCOMPARE(program(*m_window), (QList<int>{0, 104}));
        }
    }

    void aDroppedProjectIsOpenedAfterTheQuestion()
    {
        QVERIFY(m_window->view()->saveFile(path()));
        addBlock(*m_window, 104);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path())});
        QWidget* viewport = m_window->view()->viewport();
        QDragEnterEvent enter(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(viewport, &enter);
        QDropEvent drop(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        Answers answers({No});
        QApplication::sendEvent(viewport, &drop);
        QCOMPARE(Answers::said().size(), 1);
        QCOMPARE(m_window->fileName(), path());
        QCOMPARE(program(*m_window), QList<int>{0});
    }

    void newWithNoChangesKeepsNoNameAndShowsUntitled()
    {
        QVERIFY(m_window->view()->saveFile(path()));
        m_window->openPath(path());
        QVERIFY(!m_window->fileName().isEmpty());
        m_window->OnNewFile();
        QVERIFY(m_window->fileName().isEmpty());
        QVERIFY(m_window->windowTitle().endsWith(QStringLiteral(":  untitled[*]")));
        QVERIFY(!m_window->isWindowModified());
        QCOMPARE(nextModuleKey, 1);
    }

    void newResetsOnlyActionDataThatWasNeeded_data()
    {
        QTest::addColumn<QStringList>("uses");
        QTest::addColumn<int>("runTime");
        QTest::newRow("none") << QStringList() << 50;
        QTest::newRow("twice new") << QStringList{"new"} << 50;
        QTest::newRow("a refused file") << QStringList{"open a bad file"} << 50;
        QTest::newRow("a failed save") << QStringList{"a failed save"} << 50;
        for (const char* use : {"save", "save as", "open", "download", "compile",
                                "save the temporary file", "edit actions"}) {
            QTest::newRow(use) << QStringList{use} << 100;
        }
        QTest::newRow("new, save") << QStringList{"new", "save"} << 100;
    }

    void newResetsOnlyActionDataThatWasNeeded()
    {
        QFETCH(QStringList, uses);
        QFETCH(int, runTime);
        for (const QString& name : uses) {
            use(name);
        }
        m_window->OnNewFile();
        QCOMPARE(int(m_window->document().actions().step(0, 0)->runTime), runTime);
        QCOMPARE(int(m_window->document().actions().step(127, 7)->runTime), runTime);
    }

    void writtenOrNewActionDataCountsAsUnmodified_data()
    {
        QTest::addColumn<bool>("modified");
        for (const char* use :
             {"save", "save as", "open", "compile", "save the temporary file", "new"}) {
            QTest::newRow(use) << false;
        }
        for (const char* use : {"a failed save", "open a bad file", "download", "edit actions"}) {
            QTest::newRow(use) << true;
        }
    }

    void writtenOrNewActionDataCountsAsUnmodified()
    {
        QFETCH(bool, modified);
        m_window->document().actions().setModified(true);
        use(QString::fromUtf8(QTest::currentDataTag()));
        QCOMPARE(m_window->document().actions().isModified(), modified);
    }

    void onlyTheActionEditorsButtonMakesItsWindow()
    {
        const auto editors = [] {
            QList<QWidget*> found;
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                if (qobject_cast<editActionWindow*>(widget)) {
                    found << widget;
                }
            }
            return found;
        };
        for (const char* name : {"a failed save", "save", "save as", "open", "open a bad file",
                                 "download", "compile", "save the temporary file", "new"}) {
            use(QLatin1String(name));
            QVERIFY2(editors().isEmpty(), name);
        }
        m_window->document().actions().page(3)->nextPage = 7;
        use(QStringLiteral("edit actions"));
        QCOMPARE(editors().size(), 1);
        QVERIFY(editors().first()->isMaximized());
        QVERIFY(editors().first()->isVisible());
        QVERIFY(!m_window->isVisible());
        // It shows the document's own image: no other one is made, and it is shown again.
        QCOMPARE(int(m_window->document().actions().page(3)->nextPage), 7);
        static_cast<editActionWindow*>(editors().first())->resetActionBlock();
        QCOMPARE(int(m_window->document().actions().page(3)->nextPage), 0);
        use(QStringLiteral("edit actions"));
        QCOMPARE(editors().size(), 1);
    }

    void pressingShowCodeTwiceHidesThePane()
    {
        m_window->toolBar()->OnShowCode();
        QVERIFY(m_window->codeBrowser()->isVisible());
        QVERIFY(m_window->codeBrowser()->toPlainText().startsWith(
            QStringLiteral("#include \"vantrel.h\"\nvoid user_main()\n{\n")));
        m_window->toolBar()->OnShowCode();
        QVERIFY(!m_window->codeBrowser()->isVisible());
    }

    void pressingCThenPythonKeepsThePaneWithTheOtherText()
    {
        m_window->toolBar()->OnShowCode();
        m_window->toolBar()->OnShowPythonCode();
        QVERIFY(m_window->codeBrowser()->isVisible());
        QCOMPARE(m_window->codeBrowser()->toPlainText(), QStringLiteral("import Vantrel\n"));
        m_window->toolBar()->OnShowPythonCode();
        QVERIFY(!m_window->codeBrowser()->isVisible());
    }

    void thePaneFollowsADrop()
    {
        m_window->toolBar()->OnShowCode();
        QVERIFY(!m_window->codeBrowser()->toPlainText().contains(QStringLiteral("wait(1);")));
        addBlock(*m_window, 101);
        QVERIFY(m_window->codeBrowser()->toPlainText().contains(QStringLiteral("wait(1);")));
        m_window->view()->deleteModule(m_window->view()->mainBlock()->next());
        QVERIFY(!m_window->codeBrowser()->toPlainText().contains(QStringLiteral("wait(1);")));
    }

    void theCanvasHasTheKeysFromTheStart()
    {
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(m_window->view()));
        auto* blocks = new QMimeData;
        blocks->setData(QStringLiteral("korvane/tiler/modules"),
                        "<vantrel><basenode><module id=\"103\"/></basenode></vantrel>");
        QGuiApplication::clipboard()->setMimeData(blocks);
        QTest::keyClick(m_window->windowHandle(), Qt::Key_V, Qt::ControlModifier);
        QVERIFY(moduleMap.last()->id == 103);
    }

    void aPasteOfNothingCountsAsAChange()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("text"));
        QVERIFY(!documentModified);
        QTest::keyClick(m_window->view(), Qt::Key_V, Qt::ControlModifier);
        QVERIFY(documentModified);
        QVERIFY(!m_window->isWindowModified());
        const QString file = m_dir->filePath(QStringLiteral("b.tlrx"));
        Answers hands({Yes, file});
        QVERIFY(m_window->close());
        QVERIFY(hands.allUsed());
        QVERIFY(QFileInfo::exists(file));
    }

    void theTemporaryFileLiesBesideTheProgramAndItsTimerNeverRuns()
    {
        for (const QTimer* timer : m_window->findChildren<QTimer*>()) {
            QVERIFY(!timer->isActive() || timer->parent() != m_window.get());
        }
        const QString temporary =
            QCoreApplication::applicationDirPath() + QStringLiteral("/temp.tlrx");
        QFile::remove(temporary);
        m_window->OnAutoSaveFile();
        QVERIFY(QFileInfo(temporary).size() > ProjectTailSize);
        QVERIFY(QFile::remove(temporary));
    }

    void compiledDataGrowsAFileByImageAndTrailer()
    {
        QFile file(path("a.bin"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("code");
        file.close();
        m_window->appendCompiledData(path("a.bin"));
        QCOMPARE(QFileInfo(path("a.bin")).size(), 4 + 57472 + 64);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().mid(4 + 57472).startsWith(QByteArray::fromHex("55aa5a5a55aa5a5a") +
                                                         " Korvane Kinetic Edition"));
    }

    void aNumberTypedOnTheKeyboardReachesTheBlock()
    {
        addBlock(*m_window, 101);
        supermodule* wait = m_window->view()->mainBlock()->next();
        TzProgramView* view = m_window->view();
        view->viewport()->repaint();
        const QPoint field = view->mapFromScene(wait->scenePos() + QPointF(60, 120));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, field);
        const auto keyWith = [this](const QString& p_text) -> QPushButton* {
            for (QPushButton* key : m_window->blockWidget()->findChildren<QPushButton*>()) {
                if (key->text() == p_text && key->isVisible()) {
                    return key;
                }
            }
            return nullptr;
        };
        documentModified = false;
        for (const char* digit : {"0", ".", "7", "5"}) {
            QPushButton* key = keyWith(QLatin1String(digit));
            QVERIFY2(key, digit);
            QTest::mouseClick(key, Qt::LeftButton);
        }
        QCOMPARE(wait->cCode(), QStringLiteral("wait(0.75);\n"));
        QVERIFY(documentModified);
        QVERIFY(!keyWith(QStringLiteral("-")));

        // And by the keys of the computer.
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, field);
        QTest::keyClicks(view, QStringLiteral("12"));
        QTest::keyClick(view, Qt::Key_Backspace);
        QCOMPARE(wait->cCode(), QStringLiteral("wait(1);\n"));
    }

    void thePaletteComesBackOnAPressOnEmptyCanvas()
    {
        addBlock(*m_window, 101);
        supermodule* wait = m_window->view()->mainBlock()->next();
        TzProgramView* view = m_window->view();
        view->viewport()->repaint();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->mapFromScene(wait->scenePos() + QPointF(60, 120)));
        // The panel that was there goes with the next turn of the event loop.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!m_window->blockWidget()->findChild<BlockPanel*>());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(view->viewport()->width() - 30, 20));
        QVERIFY(m_window->blockWidget()->findChild<BlockPanel*>());
        QVERIFY(!focusModule);
    }

private:
    QString path(const char* p_name = "a.tlrx") const
    {
        return m_dir->filePath(QLatin1String(p_name));
    }
    void use(const QString& p_name);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<MainWindow> m_window;
};

/** One of the uses that the window has for the action data, or close by. */
void MainWindowTest::use(const QString& p_name)
{
    const QString temporary = QCoreApplication::applicationDirPath() + QStringLiteral("/temp.tlrx");
    const QHash<QString, std::function<void()>> uses{
        {"new", [this] { m_window->OnNewFile(); }},
        {"save",
         [this] {
             Answers answers(m_window->fileName().isEmpty() ? QVariantList{path("use.tlrx")}
                                                            : QVariantList());
             QCOMPARE(m_window->OnSaveFile(), 0);
         }},
        {"save as",
         [this] {
             Answers answers({path("as.tlrx")});
             m_window->OnSaveAsFile();
             QVERIFY(QFileInfo::exists(path("as.tlrx")));
         }},
        {"a failed save",
         [this] {
             Answers answers({path("none/use.tlrx")});
             QCOMPARE(m_window->OnSaveFile(), 1);
         }},
        {"open",
         [this] {
             QVERIFY(m_window->view()->saveFile(path("other.tlrx"), ActionImage().bytes()));
             m_window->openPath(path("other.tlrx"));
             QCOMPARE(m_window->fileName(), path("other.tlrx"));
         }},
        {"open a bad file",
         [this] {
             QFile bad(path("bad.tlrx"));
             QVERIFY(bad.open(QIODevice::WriteOnly));
             Answers answers({0});
             m_window->openPath(path("bad.tlrx"));
             QVERIFY(answers.allUsed());
         }},
        {"download",
         [this] {
             // Nothing is built: only what the window does before that counts.
             m_window->view()->setBuildRunner([](const QString&, int, const QString&) {});
             m_window->onDownLoad(QString());
         }},
        {"compile", [this] { m_window->appendCompiledData(path("use.bin")); }},
        {"save the temporary file",
         [this, temporary] {
             m_window->OnAutoSaveFile();
             QVERIFY(QFile::remove(temporary));
         }},
        {"edit actions", [this] { m_window->OnEditActions(); }},
    };
    QVERIFY2(uses.contains(p_name), qPrintable(p_name));
    uses.value(p_name)();
}

QTEST_MAIN(MainWindowTest)
#include "mainwindowtest.moc"
