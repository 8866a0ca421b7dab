#include "actions/model/actionimage.h"
#include "base/recentfiles.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentpicture.h"
#include "support/system/answers.h"
#include "support/system/unprivileged.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

namespace
{
const quint32 s_seed = 20201217;

QByteArray actionData() { return ActionImage().bytes(); }

QByteArray inProject(const QByteArray& p_content)
{
    return "<!DOCTYPE vantrel>\n<vantrel>" + p_content + "</vantrel>\n";
}

/** A chain behind the main block. */
QByteArray mainChain(const QByteArray& p_modules)
{
    return inProject("<basenode><module id=\"0\" x=\"50\" y=\"60\"/>" + p_modules + "</basenode>");
}

/** The most memory that this process ever held, in MiB. */
long peakMemory()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}
} // namespace

/**
 * Opens what is no project, or no longer one. Whatever a file holds, the program goes on, and what
 * it doesn't take leaves the document as it was.
 */
class BadProjectsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        // A document with a chain, a loose block, and something to take back.
        m_canvas = std::make_unique<CanvasFixture>();
        recentFiles = QStringList{"/before.tlrx"};
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        m_canvas->drop(104, loop->scenePos() + QPointF(160, 20));
        view().deleteModule(m_canvas->drop(101, QPointF(700, 450)));
        m_canvas->drop(800, QPointF(500, 450));
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
    }

    void cleanup()
    {
        m_canvas.reset();
        QVERIFY(moduleMap.isEmpty());
    }

    void aProjectCutOffOpensOnlyWhereItsTextIsWhole()
    {
        QByteArray modules;
        for (int i = 0; i < 800; ++i) {
            modules += "<module id=\"104\" n=\"0.5\"/>";
        }
        QCOMPARE(open(mainChain(modules)), 0);
        QVERIFY(view().saveFile(path("whole.tlrx"), actionData()));
        const QByteArray whole = readWhole(path("whole.tlrx"));
        const int textSize = whole.size() - static_cast<int>(ProjectTailSize);
        QVERIFY(textSize > ProjectTailSize);
        for (int size = 0; size < whole.size(); size += 1000) {
            QCOMPARE(refusedContent(whole.left(size)) + QString::number(size),
                     QString::number(size));
        }
        // At the seam, the ends of both included.
        for (const int size : {textSize - 2, textSize + 1, textSize + 2, whole.size() - 2}) {
            QCOMPARE(refusedContent(whole.left(size)) + QString::number(size),
                     QString::number(size));
        }
        // Nothing but the line feed behind the text is missed here.
        QCOMPARE(open(whole.left(textSize - 1)), 0);
        QCOMPARE(open(whole.left(whole.size() - 1)), 0);
        QCOMPARE(open(whole.left(textSize)), 0);
        QCOMPARE(m_canvas->blocks().size(), 801);
        QCOMPARE(open(whole), 0);
        QCOMPARE(worksOn(), QString());
    }

    void randomBytesAreNoProject()
    {
        QRandomGenerator random(s_seed);
        for (int i = 0; i < 200; ++i) {
            QVector<quint32> words(random.bounded(1, 30000));
            random.fillRange(words.data(), words.size());
            const int size = words.size() * 4 - random.bounded(4);
            QCOMPARE(refusedContent(QByteArray(reinterpret_cast<const char*>(words.data()), size)),
                     QString());
        }
    }

    void aProjectWithDamagedBytesOpensInOrderOrNotAtAll()
    {
        QVERIFY(view().saveFile(path("whole.tlrx"), actionData()));
        const QByteArray whole = readWhole(path("whole.tlrx"));
        const int textSize = whole.size() - static_cast<int>(ProjectTailSize);
        QRandomGenerator random(s_seed);
        QMap<int, int> results;
        for (int i = 0; i < 600; ++i) {
            QByteArray bytes = whole;
            if (i % 2 == 0) {
                // Without its tag, so that the damage isn't found at once.
                bytes.replace("tagCheck", "tagWreck");
            }
            for (int n = random.bounded(1, 4); n > 0; --n) {
                const int at = random.bounded(textSize);
                switch (random.bounded(4)) {
                case 0:
                    bytes[at] = static_cast<char>(random.generate());
                    break;
                case 1:
                    bytes[at] = static_cast<char>('0' + random.bounded(10));
                    break;
                case 2:
                    bytes.insert(at, bytes.mid(random.bounded(textSize), random.bounded(60)));
                    break;
                default:
                    bytes.remove(at, random.bounded(30));
                    break;
                }
            }
            QVERIFY(writeWhole(path(), bytes));
            const QStringList before = documentPicture(view());
            const int result = view().openFile(path());
            ++results[result];
            if (result == ProjectOpened) {
                const QString wrong = worksOn();
                QVERIFY2(wrong.isEmpty(), qPrintable(wrong + QString::fromLatin1(bytes)));
            } else {
                QVERIFY(result == ProjectUnreadable || result == ProjectWrongTag);
                QCOMPARE(documentPicture(view()), before);
            }
        }
        // The damage was of every kind.
        QVERIFY(results[ProjectOpened] > 20);
        QVERIFY(results[ProjectUnreadable] > 20);
        QVERIFY(results[ProjectWrongTag] > 20);
    }

    void aTagThatDoesNotFitIsRefused_data()
    {
        QTest::addColumn<QByteArray>("tag");
        QTest::newRow("nought") << QByteArray("<tagCheck value=\"0\"/>");
        QTest::newRow("one off") << QByteArray("<tagCheck value=\"ONE OFF\"/>");
        QTest::newRow("no value") << QByteArray("<tagCheck/>");
        QTest::newRow("empty") << QByteArray("<tagCheck value=\"\"/>");
        QTest::newRow("no number") << QByteArray("<tagCheck value=\"hello\"/>");
        QTest::newRow("negative") << QByteArray("<tagCheck value=\"-1\"/>");
        QTest::newRow("too large") << QByteArray("<tagCheck value=\"1ffffffff\"/>");
        QTest::newRow("two of them")
            << QByteArray("<tagCheck value=\"1\"/><tagCheck value=\"2\"/>");
        QTest::newRow("in a block") << QByteArray("<basenode><module id=\"103\">"
                                                  "<tagCheck value=\"1\"/></module></basenode>");
    }

    void aTagThatDoesNotFitIsRefused()
    {
        QFETCH(QByteArray, tag);
        QVERIFY(view().saveFile(path("whole.tlrx"), actionData()));
        QByteArray whole = readWhole(path("whole.tlrx"));
        const int from = whole.indexOf("<tagCheck");
        const int size = whole.indexOf("/>", from) + 2 - from;
        const QByteArray right = whole.mid(from, size);
        bool isNumber = false;
        const uint value = QByteArray(right)
                               .replace("<tagCheck value=\"", "")
                               .replace("\"/>", "")
                               .toUInt(&isNumber, 16);
        QVERIFY(isNumber);
        tag.replace("ONE OFF", QByteArray::number(value + 1, 16));
        QCOMPARE(refusedContent(whole.replace(from, size, tag), ProjectWrongTag), QString());
        // The tag that fits is the only thing that was missing.
        QCOMPARE(open(readWhole(path("whole.tlrx"))), 0);
    }

    void whatIsNotWellFormedIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = mainChain("<module id=\"103\"/>");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a nought") << QByteArray(1, '\0');
        QTest::newRow("blanks") << QByteArray(100000, ' ');
        QTest::newRow("the action data's size") << QByteArray(int(ProjectTailSize), '<');
        QTest::newRow("action data alone") << actionData();
        QTest::newRow("text") << QByteArray("no project");
        QTest::newRow("two roots") << good + "<vantrel/>";
        QTest::newRow("no end") << good.left(good.size() - 4);
        QTest::newRow("wrong nesting") << QByteArray("<vantrel><basenode></vantrel></basenode>");
        QTest::newRow("a picture")
            << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) + QByteArray(2000, '\x7f');
        QTest::newRow("broken UTF-16") << QByteArray("\xff\xfe<\0v\0a", 7);
        QTest::newRow("an encoding that isn't there")
            << "<?xml version='1.0' encoding='utf-99'?>" + good.left(20);
        QTest::newRow("a doctype that never ends")
            << QByteArray("<!DOCTYPE vantrel [") + QByteArray(100000, '<');
        QTest::newRow("a comment that never ends") << "<!--" + QByteArray(100000, '-');
        QTest::newRow("an attribute that never ends") << "<vantrel a=\"" + QByteArray(1000000, 'x');
        QByteArray open;
        for (int i = 0; i < 100000; ++i) {
            open += "<module><left>";
        }
        QTest::newRow("elements that never end") << "<vantrel>" + open;
    }

    void whatIsNotWellFormedIsRefused()
    {
        QFETCH(QByteArray, content);
        QCOMPARE(refusedContent(content), QString());
        // The same with action data behind it.
        QCOMPARE(refusedContent(content + actionData()), QString());
    }

    void entitiesMayStandInAProjectButNotMultiply_data()
    {
        QTest::addColumn<QByteArray>("declarations");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("result");
        const auto row = [](const char* p_name, const QByteArray& p_declarations,
                            const QByteArray& p_content, int p_result) {
            QTest::newRow(p_name) << p_declarations << p_content << p_result;
        };
        row("one", "<!ENTITY a 'car'>", "<x>&a;</x>", ProjectOpened);
        row("in an attribute", "<!ENTITY a 'car'>", "<x y=\"&a;\"/>", ProjectOpened);
        row("of a file", "<!ENTITY a SYSTEM 'file:///dev/zero'>", "<x>&a;</x>", ProjectOpened);
        row("nobody declared", "", "<x>&a;</x>", ProjectUnreadable);
        row("nobody declared, in an attribute", "", "<x y=\"&a;\"/>", ProjectUnreadable);
        row("another is declared", "<!ENTITY a 'car'>", "<x>&b;</x>", ProjectUnreadable);
        row("another is declared, in an attribute", "<!ENTITY a 'car'>", "<x y=\"&a;&b;\"/>",
            ProjectUnreadable);
        row("within another", "<!ENTITY a '&b;'>", "<x>&a;</x>", ProjectUnreadable);
        row("the five of every document", "",
            "<x y=\"&lt;&gt;&amp;&apos;&quot;&#65;\">&lt;&#x41;</x>", ProjectOpened);
        row("unused", "<!ENTITY % p 'x'><!NOTATION n SYSTEM 'n'>", "", ProjectOpened);
        QByteArray laughs("<!ENTITY a0 'ha'>");
        for (int i = 1; i < 12; ++i) {
            const QByteArray inner = "&a" + QByteArray::number(i - 1) + ';';
            laughs += "<!ENTITY a" + QByteArray::number(i) + " '" + inner.repeated(10) + "'>";
        }
        row("ten times ten times ten", laughs, "<x>&a11;</x>", ProjectUnreadable);
        row("the same in an attribute", laughs, "<x y=\"&a11;\"/>", ProjectUnreadable);
        row("itself", "<!ENTITY a '&b;'><!ENTITY b '&a;'>", "<x>&a;</x>", ProjectUnreadable);
        // These go round the limit that an entity has.
        const QByteArray longOne = "<!ENTITY a '" + QByteArray(4000, 'x') + "'>";
        const QByteArray uses = QByteArray("&a;").repeated(100000);
        row("a long one many times", longOne, "<x>" + uses + "</x>", ProjectUnreadable);
        row("a long one in an attribute", longOne, "<x y=\"" + uses + "\"/>", ProjectUnreadable);
        row("in the doctype",
            "<!ENTITY % p '" + QByteArray("<!-- -->").repeated(400) + "'>" +
                QByteArray("%p;").repeated(100000),
            "", ProjectUnreadable);
    }

    void entitiesMayStandInAProjectButNotMultiply()
    {
        QFETCH(QByteArray, declarations);
        QFETCH(QByteArray, content);
        QFETCH(int, result);
        const QByteArray text =
            "<!DOCTYPE vantrel [" + declarations + "]><vantrel>" + content +
            "<basenode><module id=\"0\"/><module id=\"103\"/></basenode></vantrel>";
        if (result != ProjectOpened) {
            QCOMPARE(refusedContent(text, result), QString());
            return;
        }
        QCOMPARE(open(text), result);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
        QCOMPARE(worksOn(), QString());
    }

    void strangeBlocksOpenAsFarAsTheyAreKnown_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QList<int>>("chain");
        QTest::addColumn<int>("blocks");
        const auto row = [](const char* p_name, const QByteArray& p_content,
                            const QList<int>& p_chain, int p_blocks) {
            QTest::newRow(p_name) << p_content << p_chain << p_blocks;
        };
        const QByteArray forward("<module id=\"103\"/>");
        row("another root", "<html><body/></html>", {0}, 1);
        row("modules where none belong", inProject(forward + "<left>" + forward + "</left>"), {0},
            1);
        row("unknown types",
            mainChain(
                "<module id=\"1\"/><module id=\"401\"/><module id=\"404\"/><module id=\"433\"/>"
                "<module id=\"-5\"/><module id=\"907\"/>" +
                forward),
            {0, 103}, 2);
        row("an unknown body",
            mainChain("<module id=\"301\"><left><module id=\"7\"/></left></module>" + forward),
            {0, 301, 103}, 3);
        row("an unknown head", inProject("<basenode><module id=\"7\"/>" + forward + "</basenode>"),
            {0}, 2);
        // What is no number reads as 0, which is the main block's type.
        row("types that are no numbers",
            mainChain("<module id=\"x\"/><module id=\"\"/><module id=\"1e2\"/>"
                      "<module id=\"99999999999\"/><module/>"),
            {0, 0, 0, 0, 0, 0}, 6);
        row("many main blocks in one chain",
            mainChain("<module id=\"0\"/>" + forward + "<module id=\"0\"/>"), {0, 0, 103, 0}, 4);
        row("a main block in a body",
            mainChain("<module id=\"303\"><left><module id=\"0\"/>" + forward + "</left></module>"),
            {0, 303}, 4);
        row("a main block with a body",
            inProject("<basenode><module id=\"0\"><left>" + forward + "</left></module>" + forward +
                      "</basenode>"),
            {0, 103}, 2);
        row("two main blocks with chains",
            inProject("<basenode><module id=\"0\"/>" + forward +
                      "</basenode><basenode><module id=\"0\"/></basenode>"
                      "<basenode><module id=\"0\"/><module id=\"102\"/></basenode>"),
            {0, 103, 102}, 3);
        row("something behind an endless loop", mainChain("<module id=\"303\"/>" + forward),
            {0, 303, 103}, 3);
        row("two bodies",
            mainChain("<module id=\"301\"><left>" + forward + "</left><left>" + forward + forward +
                      "</left></module>"),
            {0, 301}, 3);
        row("bodies of what has none",
            mainChain("<module id=\"101\"><left>" + forward + "</left><right>" + forward +
                      "</right></module>"),
            {0, 101}, 4);
        // The parser lets these pass.
        row("an attribute twice", mainChain("<module id=\"103\" id=\"103\"/>"), {0, 103}, 2);
        row("a block of another slot", mainChain("<module id=\"103\" ownid=\"404\"/>"), {0, 103},
            2);
    }

    void strangeBlocksOpenAsFarAsTheyAreKnown()
    {
        QFETCH(QByteArray, content);
        QFETCH(QList<int>, chain);
        QFETCH(int, blocks);
        QCOMPARE(open(content), 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), chain);
        QCOMPARE(m_canvas->blocks().size(), blocks);
        QVERIFY(!view().undoStack().canUndo());
        QCOMPARE(recentFiles, (QStringList{path(), "/before.tlrx"}));
        QCOMPARE(worksOn(), QString());
        // And the canvas is as usable as ever.
        m_canvas->dropBehind(m_canvas->main(), 103);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
    }

    void valuesOutOfRangeAreTakenWithoutHarm_data()
    {
        QTest::addColumn<QByteArray>("value");
        for (const char* value : {"2147483647",
                                  "-2147483648",
                                  "2147483646",
                                  "-2147483640",
                                  "4294967295",
                                  "99999999999999999999999",
                                  "-1",
                                  "nan",
                                  "-nan",
                                  "inf",
                                  "-inf",
                                  "1e400",
                                  "-1e308",
                                  "1e-400",
                                  "3.5",
                                  "-0",
                                  "",
                                  " 5 ",
                                  "0x10",
                                  "abc",
                                  "%1",
                                  "%%%",
                                  "&lt;&quot;&amp;",
                                  "\xe4\xba\x94"}) {
            QTest::newRow(value) << QByteArray(value);
        }
        QTest::newRow("ten thousand digits") << QByteArray(10000, '9');
        QTest::newRow("missing") << QByteArray("MISSING");
    }

    void valuesOutOfRangeAreTakenWithoutHarm()
    {
        QFETCH(QByteArray, value);
        QByteArray attributes;
        for (const char* name : {"x", "y", "ownid", "moduleKey", "n", "time", "port", "bInfread",
                                 "servoId", "angle"}) {
            if (value != "MISSING") {
                attributes += QByteArray(" ") + name + "=\"" + value + '"';
            }
        }
        const QByteArray forward = "<module id=\"103\"" + attributes + "/>";
        QByteArray modules;
        QByteArray loose;
        QList<int> chain{0};
        for (const int id : {100, 101, 102, 103, 104, 105, 106, 107, 109, 110, 111, 112,
                             113, 117, 118, 119, 120, 301, 306, 307, 308, 309, 800, 801,
                             802, 803, 804, 900, 901, 902, 903, 904, 905, 906, 303}) {
            const bool isLoop = 301 <= id && id <= 307;
            const QByteArray element =
                "<module id=\"" + QByteArray::number(id) + '"' + attributes + '>' +
                (isLoop ? "<left>" + forward + forward + "</left>" : QByteArray()) + "</module>";
            modules += element;
            loose += "<basenode>" + element + forward + "</basenode>";
            chain.append(id);
        }
        const QByteArray name = value == "MISSING" ? QByteArray() : " downname=\"" + value + '"';
        QCOMPARE(open("<vantrel" + name + "><basenode><module id=\"0\"" + attributes + "/>" +
                      modules + "</basenode>" + loose + "</vantrel>"),
                 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), chain);
        // Each twice, the loose one with a block behind it, and four loops with two blocks in them.
        QCOMPARE(m_canvas->blocks().size(), 1 + 35 * 3 + 4 * 2 * 2);
        // All of them in sight, wherever they are, with the widgets of their buttons.
        for (supermodule* block : m_canvas->blocks()) {
            for (int i = 0; i < block->buttonCount(); ++i) {
                QVERIFY(block->button(i));
            }
            int left = 0;
            int top = 0;
            int right = 0;
            int bottom = 0;
            block->extent(left, top, right, bottom);
        }
        view().fitInView(view().scene()->itemsBoundingRect(), Qt::KeepAspectRatio);
        view().viewport()->grab();
        view().centerOn(m_canvas->main()->next());
        QCOMPARE(worksOn(), QString());
    }

    void blocksAtTheEdgeOfTheNumbersAreLaidOut()
    {
        QByteArray body;
        for (int i = 0; i < 20; ++i) {
            body += "<module id=\"301\" n=\"2\"><left><module id=\"103\"/></left></module>";
        }
        QByteArray nested = body;
        for (int i = 0; i < 100; ++i) {
            nested = "<module id=\"306\"><left>" + nested + "</left></module>";
        }
        for (const char* edge : {"2147483647", "-2147483648"}) {
            const QByteArray at = QByteArray(" x=\"") + edge + "\" y=\"" + edge + '"';
            QCOMPARE(open(inProject("<basenode><module id=\"0\"" + at + "/>" + nested +
                                    "</basenode>" + "<basenode><module id=\"301\"" + at +
                                    "><left>" + nested + "</left></module></basenode>")),
                     0);
            // A loop is as wide as what is in it, even there.
            QVERIFY(m_canvas->main()->next()->boundingRect().width() > 20 * 280);
            QCOMPARE(worksOn(), QString());
        }
    }

    void aHundredThousandBlocksInOneChain()
    {
        const int count = 100000;
        QByteArray modules;
        modules.reserve(count * 40);
        for (int i = 0; i < count; ++i) {
            modules += "<module id=\"104\" n=\"0.5\"/>";
        }
        QCOMPARE(open(mainChain(modules)), 0);
        const auto isThere = [this] {
            const supermodule* last = m_canvas->main()->lastOf();
            return moduleMap.size() == count &&
                   last->scenePos() == QPointF(50 + 140 + 120.0 * (count - 1), 60);
        };
        QVERIFY(isThere());
        QApplication::processEvents();
        const QString text = view().generateProjectCode(1);
        QCOMPARE(text.count(QStringLiteral("wait(0.5);")), count);
        QVERIFY(view().saveFile(path("b.tlrx"), actionData()));
        QVERIFY(QFileInfo(path("b.tlrx")).size() < MaximalProjectSize / 2);
        QCOMPARE(view().openFile(path("b.tlrx")), 0);
        QVERIFY(isThere());
        QCOMPARE(view().generateProjectCode(1), text);
        QApplication::processEvents();
        view().newProgram();
        view().resetDocument();
        QCOMPARE(m_canvas->blocks(), QList<supermodule*>{m_canvas->main()});
    }

    void tenThousandLevelsAreRefused()
    {
        const auto nested = [](int p_levels, const QByteArray& p_open, const QByteArray& p_close) {
            return p_open.repeated(p_levels) + p_close.repeated(p_levels);
        };
        const QByteArray loops = nested(10000, "<module id=\"303\"><left>", "</left></module>");
        QCOMPARE(refusedContent(mainChain(loops)), QString());
        QCOMPARE(refusedContent(mainChain(loops) + actionData()), QString());
        // Whatever the elements are, and whatever the root is.
        QCOMPARE(refusedContent(nested(10000, "<a>", "</a>")), QString());
        QCOMPARE(refusedContent(inProject(nested(1000, "<a>", "</a>"))), QString());
        QCOMPARE(open(inProject(nested(999, "<a>", "</a>"))), 0);
        QCOMPARE(worksOn(), QString());
    }

    void aGibibyteIsRefusedUnread_data()
    {
        QTest::addColumn<bool>("sparse");
        QTest::newRow("blanks") << false;
        QTest::newRow("a hole") << true;
    }

    void aGibibyteIsRefusedUnread()
    {
        QFETCH(bool, sparse);
        const qint64 size = qint64(1) << 30;
        if (!sparse && QStorageInfo(m_dir->path()).bytesAvailable() < 2 * size) {
            QSKIP("There is no room for a file of this size.");
        }
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        if (sparse) {
            QVERIFY(file.resize(size));
        } else {
            const QByteArray blanks(16 * 1024 * 1024, ' ');
            for (qint64 written = 0; written < size; written += blanks.size()) {
                QCOMPARE(file.write(blanks), qint64(blanks.size()));
            }
        }
        file.close();
        QCOMPARE(QFileInfo(path()).size(), size);
        const long before = peakMemory();
        QCOMPARE(refused(path()), QString());
        QVERIFY(peakMemory() - before < 100);
    }

    void theLargestFileOfBlanksIsRefused()
    {
        QCOMPARE(refusedContent(QByteArray(int(MaximalProjectSize), ' ')), QString());
        QCOMPARE(refusedContent(QByteArray(int(MaximalProjectSize), '\0')), QString());
        // A project among so many of them is one, up to the last byte that is allowed.
        QByteArray text = mainChain("<module id=\"103\"/>");
        text.insert(text.indexOf("<basenode>"),
                    QByteArray(int(MaximalProjectSize) - text.size(), ' '));
        QCOMPARE(refusedContent(text + ' '), QString());
        QCOMPARE(open(text), 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
    }

    void whatIsNoFileIsRefused()
    {
        QVERIFY(QDir().mkdir(path("folder.tlrx")));
        QCOMPARE(refused(path("folder.tlrx")), QString());
        const QByteArray pipe = QFile::encodeName(path("pipe.tlrx"));
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        QCOMPARE(refused(path("pipe.tlrx")), QString());
        for (const char* device : {"/dev/zero", "/dev/full", "/dev/null", "/dev/tty"}) {
            QFile::remove(path("device.tlrx"));
            if (QFileInfo::exists(QLatin1String(device))) {
                QVERIFY(QFile::link(QLatin1String(device), path("device.tlrx")));
                QCOMPARE(refused(path("device.tlrx")), QString());
            }
        }
        // What the system makes up as it is read.
        QVERIFY(QFile::link(QStringLiteral("/proc/self/maps"), path("made-up.tlrx")));
        QCOMPARE(refused(path("made-up.tlrx")), QString());
    }

    void whatCanNotBeReachedCountsAsMissing()
    {
        QVERIFY(QFile::link(path("nowhere"), path("dangling.tlrx")));
        QVERIFY(QFile::link(path("circle.tlrx"), path("circle.tlrx")));
        QVERIFY(writeWhole(path("file"), QByteArray()));
        const QStringList names{path("gone.tlrx"),
                                path("dangling.tlrx"),
                                path("circle.tlrx"),
                                path("file") + QStringLiteral("/a.tlrx"),
                                m_dir->filePath(QString(300, QLatin1Char('x'))),
                                QString()};
        for (const QString& name : names) {
            Answers hands({No});
            QCOMPARE(refused(name, ProjectMissing), QString());
            QVERIFY(hands.allUsed());
        }
    }

    void aFileThatMayNotBeReadIsRefused()
    {
        QVERIFY(writeWhole(path(), mainChain("<module id=\"103\"/>")));
        QVERIFY(QFile::setPermissions(path(), QFileDevice::Permissions()));
        QVERIFY(Unprivileged::openToChanges(m_dir->path()));
        if (!Unprivileged::works()) {
            QSKIP("The rights of this user can't be given away.");
        }
        const Unprivileged user;
        QCOMPARE(refused(path()), QString());
    }

private:
    QString path(const char* p_name = "a.tlrx") const
    {
        return m_dir->filePath(QLatin1String(p_name));
    }
    TzProgramView& view() { return m_canvas->view; }
    int open(const QByteArray& p_content)
    {
        return writeWhole(path(), p_content) ? view().openFile(path()) : -1;
    }

    /** Opens what must be refused: empty if it is and nothing has changed, else what is wrong. */
    QString refused(const QString& p_path, int p_result = ProjectUnreadable)
    {
        const QStringList before = documentPicture(view());
        const int result = view().openFile(p_path);
        if (result != p_result) {
            return QStringLiteral("result %1").arg(result);
        }
        return documentPicture(view()) == before ? QString()
                                                 : QStringLiteral("the document changed");
    }

    QString refusedContent(const QByteArray& p_content, int p_result = ProjectUnreadable)
    {
        return writeWhole(path(), p_content) ? refused(path(), p_result)
                                             : QStringLiteral("no file");
    }

    /** Uses the document that was opened: empty if all goes well. */
    QString worksOn()
    {
        const QStringList broken = m_canvas->brokenInvariants();
        if (!broken.isEmpty()) {
            return broken.join(QLatin1Char('\n'));
        }
        view().viewport()->grab();
        const QString text = view().generateProjectCode(1);
        view().generateProjectCode(2);
        if (!view().saveFile(path("again.tlrx"), actionData())) {
            return QStringLiteral("not saved");
        }
        if (view().openFile(path("again.tlrx")) != ProjectOpened) {
            return QStringLiteral("not opened again");
        }
        if (view().generateProjectCode(1) != text) {
            return QStringLiteral("another program");
        }
        // What was written last is read first, so it takes two turns until a file is the same
        // again.
        if (!view().saveFile(path("turned.tlrx"), actionData()) ||
            view().openFile(path("turned.tlrx")) != ProjectOpened ||
            !view().saveFile(path("third.tlrx"), actionData()) ||
            readWhole(path("third.tlrx")) != readWhole(path("again.tlrx"))) {
            return QStringLiteral("another file");
        }
        view().newProgram();
        view().resetDocument();
        return m_canvas->blocks() == QList<supermodule*>{m_canvas->main()}
                   ? QString()
                   : QStringLiteral("blocks left");
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<CanvasFixture> m_canvas;
};

QTEST_MAIN(BadProjectsTest)
#include "badprojectstest.moc"
