#include "actions/editactionwindow.h"
#include "actions/model/actionimage.h"
#include "base/recentfiles.h"
#include "project/projectfile.h"
#include "support/canvas/documentpicture.h"
#include "support/system/answers.h"
#include "support/system/datatable.h"
#include "windowbench.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        recentFiles.clear();
        m_bench = std::make_unique<WindowBench>();
    }

    void cleanup()
    {
        m_bench.reset();
        QVERIFY(!mainWindow);
        QVERIFY(!programView);
        QVERIFY(moduleMap.isEmpty());
        QVERIFY(rootModules.isEmpty());
    }

    void theWindowOpensOnAnEmptyProjectWithItsTitle()
    {
        // As it comes, before any hand has moved the canvas.
        m_bench.reset();
        MainWindow window;
        window.resize(1280, 768);
        window.show();
        QApplication::processEvents();
        QCOMPARE(window.windowTitle(),
                 QStringLiteral("塔勒积木编程 v1.1.2 2020-12-17:  untitled[*]"));
        QVERIFY(window.fileName().isEmpty());
        QCOMPARE(CanvasHands::ids(window.view()->mainBlock()), QList<int>{0});
        QCOMPARE(mainWindow.data(), &window);
        QVERIFY(!documentModified);
        const TzProgramView* view = window.view();
        // The main block is in sight.
        QVERIFY(view->viewport()->rect().contains(
            view->mapFromScene(view->mainBlock()->sceneBoundingRect().center())));
    }

    void thePaletteLiesBelowTheCanvasAndTheCodePaneIsHidden()
    {
        const auto globalRect = [](const QWidget* p_widget) {
            return QRect(p_widget->mapToGlobal(QPoint(0, 0)), p_widget->size());
        };
        const QRect bar = globalRect(m_bench->window.toolBar());
        const QRect canvas = globalRect(&m_bench->canvas());
        const QRect palette = globalRect(m_bench->window.blockWidget());
        QCOMPARE(bar.height(), 34);
        QCOMPARE(canvas.top(), bar.bottom() + 1);
        QCOMPARE(palette.top(), canvas.bottom() + 1);
        QCOMPARE(palette.height(), 236);
        QCOMPARE(canvas.width(), m_bench->window.width());
        QVERIFY(!m_bench->window.codeBrowser()->isVisible());
        QCOMPARE(m_bench->window.codeBrowser()->font().pixelSize(), 12);
    }

    void noInTheQuestionAtCloseEndsAndLosesTheChange()
    {
        m_bench->add(103);
        QVERIFY(documentModified);
        QVERIFY(m_bench->window.isWindowModified());
        Answers answers({No});
        QVERIFY(m_bench->window.close());
        QCOMPARE(Answers::said(), QStringList{QStringLiteral("保存|文件已修改，是否保存")});
        QVERIFY(!m_bench->window.isVisible());
    }

    void cancelInTheQuestionAtCloseKeepsTheWindow()
    {
        m_bench->add(103);
        Answers answers({Cancel});
        QVERIFY(!m_bench->window.close());
        QVERIFY(m_bench->window.isVisible());
        QVERIFY(documentModified);
        QCOMPARE(m_bench->program(), (QList<int>{0, 103}));
    }

    void closingAnUntitledDocumentWithoutAFileNameKeepsTheWindow()
    {
        m_bench->add(103);
        Answers answers({Yes, QString()});
        QVERIFY(!m_bench->window.close());
        QVERIFY(m_bench->window.isVisible());
        QCOMPARE(Answers::said().last(), QStringLiteral("保存文件"));
        QVERIFY(documentModified);
    }

    void aSaveThatFailsKeepsTheWindow()
    {
        QVERIFY(m_bench->canvas().saveFile(path()));
        m_bench->window.openPath(path());
        m_bench->add(103);
        // Its folder goes: there is nowhere to save to.
        QVERIFY(QDir(m_bench->dir.path()).removeRecursively());
        Answers answers({Yes});
        QVERIFY(!m_bench->window.close());
        QVERIFY(documentModified);
        QCOMPARE(m_bench->window.OnSaveFile(), 1);
    }

    void savingAsksForANameOnceAndThenNoMore()
    {
        m_bench->add(103);
        {
            Answers answers({path()});
            QCOMPARE(m_bench->window.OnSaveFile(), 0);
            QVERIFY(answers.allUsed());
        }
        QCOMPARE(m_bench->window.fileName(), path());
        QVERIFY(!documentModified);
        QVERIFY(!m_bench->window.isWindowModified());
        QVERIFY(m_bench->window.windowTitle().endsWith(QStringLiteral(":  ") + path() +
                                                       QStringLiteral("[*]")));
        m_bench->add(102);
        QCOMPARE(m_bench->window.OnSaveFile(), 0);
        QVERIFY(!documentModified);
        m_bench->window.OnNewFile();
        QCOMPARE(m_bench->program(), QList<int>{0});
        m_bench->window.openPath(path());
        QCOMPARE(m_bench->program(), (QList<int>{0, 103, 102}));
    }

    void aNameTypedWithoutTheEndingGetsIt()
    {
        Answers answers({path("car")});
        QCOMPARE(m_bench->window.OnSaveFile(), 0);
        QCOMPARE(m_bench->window.fileName(), path("car.tlrx"));
        QVERIFY(QFileInfo::exists(path("car.tlrx")));
    }

    void aNameTypedWithoutTheEndingReplacesAFileOnlyIfTheUserSaysSo_data()
    {
        columns<QString, bool>("folder", "again");
        QTest::newRow("plain folder") << QStringLiteral("robots") << false;
        // The file dialog takes what follows the dot for the ending, and leaves the name alone. It
        // comes up once more, with the whole name, to ask about that.
        QTest::newRow("folder with a dot") << QStringLiteral("robots.old") << true;
    }

    void aNameTypedWithoutTheEndingReplacesAFileOnlyIfTheUserSaysSo()
    {
        QFETCH(QString, folder);
        QFETCH(bool, again);
        QVERIFY(QDir(m_bench->dir.path()).mkdir(folder));
        const QString typed = m_bench->dir.filePath(folder + QStringLiteral("/car"));
        const QString file = typed + QStringLiteral(".tlrx");
        QVERIFY(writeWhole(file, "another one's"));
        m_bench->add(103);
        const auto saveAs = [&](const QVariantList& p_answers) {
            Answers answers(QVariantList{typed} + (again ? QVariantList{file} : QVariantList()) +
                            p_answers);
            m_bench->window.OnSaveAsFile();
            return answers.allUsed() &&
                   Answers::said().filter(QStringLiteral("|car.tlrx")).size() == 1;
        };
        // No to the question, and no other name.
        QVERIFY(saveAs({No, QString()}));
        QCOMPARE(readWhole(file), QByteArray("another one's"));
        QVERIFY(documentModified);
        QVERIFY(m_bench->window.fileName().isEmpty());
        QVERIFY(saveAs({Yes}));
        QVERIFY(readWhole(file).startsWith("<!DOCTYPE vantrel>"));
        QCOMPARE(m_bench->window.fileName(), file);
        QVERIFY(!QFileInfo::exists(typed));
    }

    void saveAsTakesTheNewName()
    {
        m_bench->add(103);
        Answers answers({path("b.tlrx"), QString()});
        m_bench->window.OnSaveAsFile();
        QCOMPARE(Answers::said(), QStringList{QStringLiteral("Save File")});
        QCOMPARE(m_bench->window.fileName(), path("b.tlrx"));
        QVERIFY(m_bench->window.windowTitle().endsWith(path("b.tlrx") + QStringLiteral("[*]")));
        QVERIFY(!documentModified);
        m_bench->window.OnSaveAsFile();
        QCOMPARE(m_bench->window.fileName(), path("b.tlrx"));
    }

    void saveTakesTheWindowsMarkAwayAndSaveAsLeavesIt()
    {
        m_bench->add(103);
        QVERIFY(m_bench->window.isWindowModified());
        use(QStringLiteral("a failed save"));
        QVERIFY(m_bench->window.isWindowModified());
        use(QStringLiteral("save as"));
        QVERIFY(!documentModified);
        QVERIFY(m_bench->window.isWindowModified());
        use(QStringLiteral("save"));
        QVERIFY(!m_bench->window.isWindowModified());
    }

    void aSavedProjectEndsInTheActionDataAndResavingReplacesIt()
    {
        Answers answers({path()});
        QCOMPARE(m_bench->window.OnSaveFile(), 0);
        const qint64 size = QFileInfo(path()).size();
        QVERIFY(size > ProjectTailSize);
        QCOMPARE(m_bench->window.OnSaveFile(), 0);
        QCOMPARE(QFileInfo(path()).size(), size);
        QCOMPARE(readWhole(path()).mid(static_cast<int>(size) - ProjectTailSize),
                 ActionImage().bytes());
    }

    void openingTellsWhatWentWrong()
    {
        QVERIFY(writeWhole(path(), "no project"));
        {
            Answers answers({path(), 0});
            m_bench->window.OnOpenFile();
            QVERIFY(answers.allUsed());
            QCOMPARE(Answers::said(), (QStringList{QStringLiteral("打开文件"),
                                                   QStringLiteral("打开文件|文件打开失败")}));
        }
        QVERIFY(writeWhole(path(), "<vantrel><tagCheck value=\"1\"/></vantrel>"));
        {
            Answers answers({0});
            m_bench->window.openPath(path());
            QCOMPARE(Answers::said(), QStringList{QStringLiteral("打开文件|文件校验错误")});
        }
        QVERIFY(m_bench->window.fileName().isEmpty());
        Answers answers({QString()});
        m_bench->window.OnOpenFile();
        QVERIFY(m_bench->window.fileName().isEmpty());
    }

    void openingLoadsProgramAndActionData()
    {
        m_bench->add(104);
        ActionImage image;
        image.page(3)->nextPage = 7;
        QVERIFY(m_bench->canvas().saveFile(path(), image.bytes()));
        documentModified = false;
        m_bench->window.OnNewFile();
        QCOMPARE(m_bench->program(), QList<int>{0});
        m_bench->window.openPath(path());
        QCOMPARE(m_bench->program(), (QList<int>{0, 104}));
        QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), 7);
        QCOMPARE(m_bench->window.fileName(), path());
        QVERIFY(!documentModified);
    }

    void theLastBytesOfAFileAreItsActionData_data()
    {
        columns<QByteArray, int, int, bool>("file", "nextPage", "runTime", "modified");
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
        QVERIFY(writeWhole(path(), file));
        m_bench->window.document().actions().page(3)->nextPage = 7;
        m_bench->window.document().actions().setModified(true);
        m_bench->window.openPath(path());
        QCOMPARE(m_bench->window.fileName(), path());
        QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), nextPage);
        QCOMPARE(int(m_bench->window.document().actions().step(0, 0)->runTime), runTime);
        QCOMPARE(m_bench->window.document().actions().isModified(), modified);
    }

    void aFileThatIsRefusedLeavesTheActionData()
    {
        m_bench->window.document().actions().page(3)->nextPage = 7;
        m_bench->window.document().actions().setModified(true);
        for (const char* text : {"no project", "<vantrel><tagCheck value=\"1\"/></vantrel>"}) {
            QVERIFY(writeWhole(path(), text + ActionImage().bytes()));
            Answers answers({0});
            m_bench->window.openPath(path());
            QVERIFY(answers.allUsed());
            QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), 7);
            QVERIFY(m_bench->window.document().actions().isModified());
        }
    }

    void openingAsksAboutUnsavedChangesFirst()
    {
        QVERIFY(m_bench->canvas().saveFile(path()));
        m_bench->add(104);
        {
            Answers answers({Cancel});
            m_bench->window.openPath(path());
            QVERIFY(answers.allUsed());
        }
        QCOMPARE(m_bench->program(), (QList<int>{0, 104}));
        Answers answers({No});
        m_bench->window.openPath(path());
        QCOMPARE(m_bench->program(), QList<int>{0});
    }

    void aSuffixInCapitalsIsNotOpened()
    {
        QVERIFY(m_bench->canvas().saveFile(path("a.TLRX")));
        m_bench->add(104);
        m_bench->window.openPath(path("a.TLRX"));
        QCOMPARE(m_bench->program(), (QList<int>{0, 104}));
        QVERIFY(m_bench->window.fileName().isEmpty());
    }

    void codeFilesAreNotOpened()
    {
        m_bench->add(104);
        for (const char* name : {"a.tvc", "a.tvpy", "a.txt", "", "tlrx"}) {
            m_bench->window.openPath(QLatin1String(name));
            QCOMPARE(m_bench->program(), (QList<int>{0, 104}));
        }
    }

    void aDroppedProjectIsOpenedAfterTheQuestion()
    {
        QVERIFY(m_bench->canvas().saveFile(path()));
        m_bench->add(104);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path())});
        QWidget* viewport = m_bench->canvas().viewport();
        QDragEnterEvent enter(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(viewport, &enter);
        QDropEvent drop(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        Answers answers({No});
        QApplication::sendEvent(viewport, &drop);
        QCOMPARE(Answers::said().size(), 1);
        QCOMPARE(m_bench->window.fileName(), path());
        QCOMPARE(m_bench->program(), QList<int>{0});
    }

    void newWithNoChangesKeepsNoNameAndShowsUntitled()
    {
        QVERIFY(m_bench->canvas().saveFile(path()));
        m_bench->window.openPath(path());
        QVERIFY(!m_bench->window.fileName().isEmpty());
        m_bench->window.OnNewFile();
        QVERIFY(m_bench->window.fileName().isEmpty());
        QVERIFY(m_bench->window.windowTitle().endsWith(QStringLiteral(":  untitled[*]")));
        QVERIFY(!m_bench->window.isWindowModified());
        QCOMPARE(nextModuleKey, 1);
    }

    void newResetsOnlyActionDataThatWasNeeded_data()
    {
        columns<QStringList, int>("uses", "runTime");
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
        m_bench->window.OnNewFile();
        QCOMPARE(int(m_bench->window.document().actions().step(0, 0)->runTime), runTime);
        QCOMPARE(int(m_bench->window.document().actions().step(127, 7)->runTime), runTime);
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
        m_bench->window.document().actions().setModified(true);
        use(QString::fromUtf8(QTest::currentDataTag()));
        QCOMPARE(m_bench->window.document().actions().isModified(), modified);
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
        m_bench->window.document().actions().page(3)->nextPage = 7;
        use(QStringLiteral("edit actions"));
        QCOMPARE(editors().size(), 1);
        QVERIFY(editors().first()->isMaximized());
        QVERIFY(editors().first()->isVisible());
        QVERIFY(!m_bench->window.isVisible());
        // It shows the document's own image: no other one is made, and it is shown again.
        QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), 7);
        static_cast<editActionWindow*>(editors().first())->resetActionBlock();
        QCOMPARE(int(m_bench->window.document().actions().page(3)->nextPage), 0);
        use(QStringLiteral("edit actions"));
        QCOMPARE(editors().size(), 1);
    }

    void aThirdPressShowsThePaneAgainAsItWas_data()
    {
        QTest::addColumn<bool>("python");
        QTest::newRow("C") << false;
        QTest::newRow("Python") << true;
    }

    void aThirdPressShowsThePaneAgainAsItWas()
    {
        QFETCH(bool, python);
        const auto press = [&] {
            python ? m_bench->bar().OnShowPythonCode() : m_bench->bar().OnShowCode();
        };
        QTextBrowser& pane = *m_bench->window.codeBrowser();
        press();
        QTRY_COMPARE(pane.width(), 400);
        press();
        // What changes while the pane is hidden is in it when it comes back.
        m_bench->add(101);
        press();
        QVERIFY(pane.isVisible());
        QTRY_COMPARE(pane.width(), 400);
        const QString text = m_bench->canvas().generateVisibleCode(python ? PythonCode : CCode);
        QCOMPARE(pane.toPlainText(), text);
        QVERIFY(text.contains(QStringLiteral("wait(1)")) || python);
        m_bench->add(105);
        QCOMPARE(pane.toPlainText(),
                 m_bench->canvas().generateVisibleCode(python ? PythonCode : CCode));
        press();
        QVERIFY(!pane.isVisible());
    }

    void theCanvasHasTheKeysFromTheStart()
    {
        QVERIFY(QTest::qWaitForWindowActive(&m_bench->window));
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(&m_bench->canvas()));
        auto* blocks = new QMimeData;
        blocks->setData(QStringLiteral("korvane/tiler/modules"),
                        "<vantrel><basenode><module id=\"103\"/></basenode></vantrel>");
        QGuiApplication::clipboard()->setMimeData(blocks);
        QTest::keyClick(m_bench->window.windowHandle(), Qt::Key_V, Qt::ControlModifier);
        QVERIFY(moduleMap.last()->id == 103);
    }

    void aPasteOfNothingCountsAsAChange()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("text"));
        QVERIFY(!documentModified);
        QTest::keyClick(&m_bench->canvas(), Qt::Key_V, Qt::ControlModifier);
        QVERIFY(documentModified);
        QVERIFY(!m_bench->window.isWindowModified());
        const QString file = m_bench->dir.filePath(QStringLiteral("b.tlrx"));
        Answers hands({Yes, file});
        QVERIFY(m_bench->window.close());
        QVERIFY(hands.allUsed());
        QVERIFY(QFileInfo::exists(file));
    }

    void compiledDataGrowsAFileByImageAndTrailer()
    {
        QVERIFY(writeWhole(path("a.bin"), "code"));
        m_bench->window.appendCompiledData(path("a.bin"));
        QCOMPARE(QFileInfo(path("a.bin")).size(), 4 + 57472 + 64);
        QVERIFY(
            readWhole(path("a.bin"))
                .mid(4 + 57472)
                .startsWith(QByteArray::fromHex("55aa5a5a55aa5a5a") + " Korvane Kinetic Edition"));
    }

    void aNumberTypedOnTheKeyboardReachesTheBlock()
    {
        m_bench->add(101);
        supermodule* wait = m_bench->canvas().mainBlock()->next();
        TzProgramView* view = &m_bench->canvas();
        view->viewport()->repaint();
        const QPoint field = view->mapFromScene(wait->scenePos() + QPointF(60, 120));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, field);
        const auto keyWith = [this](const QString& p_text) -> QPushButton* {
            for (QPushButton* key : m_bench->palette().findChildren<QPushButton*>()) {
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

private:
    QString path(const char* p_name = "a.tlrx") const { return m_bench->path(p_name); }
    /** One of the uses that the window has for the action data, or close by. */
    void use(const QString& p_name)
    {
        const QString temporary =
            QCoreApplication::applicationDirPath() + QStringLiteral("/temp.tlrx");
        const QHash<QString, std::function<void()>> uses{
            {"new", [this] { m_bench->window.OnNewFile(); }},
            {"save",
             [this] {
                 Answers answers(m_bench->window.fileName().isEmpty()
                                     ? QVariantList{path("use.tlrx")}
                                     : QVariantList());
                 QCOMPARE(m_bench->window.OnSaveFile(), 0);
             }},
            {"save as",
             [this] {
                 Answers answers({path("as.tlrx")});
                 m_bench->window.OnSaveAsFile();
                 QVERIFY(QFileInfo::exists(path("as.tlrx")));
             }},
            {"a failed save",
             [this] {
                 Answers answers({path("none/use.tlrx")});
                 QCOMPARE(m_bench->window.OnSaveFile(), 1);
             }},
            {"open",
             [this] {
                 QVERIFY(m_bench->canvas().saveFile(path("other.tlrx"), ActionImage().bytes()));
                 m_bench->window.openPath(path("other.tlrx"));
                 QCOMPARE(m_bench->window.fileName(), path("other.tlrx"));
             }},
            {"open a bad file",
             [this] {
                 QVERIFY(writeWhole(path("bad.tlrx"), QByteArray()));
                 Answers answers({0});
                 m_bench->window.openPath(path("bad.tlrx"));
                 QVERIFY(answers.allUsed());
             }},
            {"download",
             [this] {
                 // Nothing is built: only what the window does before that counts.
                 m_bench->canvas().setBuildRunner([](const QString&, int, const QString&) {});
                 m_bench->window.onDownLoad(QString());
             }},
            {"compile", [this] { m_bench->window.appendCompiledData(path("use.bin")); }},
            {"save the temporary file",
             [this, temporary] {
                 m_bench->window.OnAutoSaveFile();
                 QVERIFY(QFile::remove(temporary));
             }},
            {"edit actions", [this] { m_bench->window.OnEditActions(); }},
        };
        QVERIFY2(uses.contains(p_name), qPrintable(p_name));
        uses.value(p_name)();
    }

    std::unique_ptr<WindowBench> m_bench;
};

QTEST_MAIN(MainWindowTest)
#include "mainwindowtest.moc"
