#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentpicture.h"
#include "support/system/datatable.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const char s_blocks[] = "korvane/tiler/modules";
const char s_forward[] = "<module id=\"103\" x=\"7\" y=\"8\"/>";

/** How a user pastes. */
enum class Way { Key, Menu };

QByteArray inClipboard(const QByteArray& p_content)
{
    return "<!DOCTYPE vantrel>\n<vantrel>\n" + p_content + "</vantrel>\n";
}

QByteArray chainOf(const QByteArray& p_modules)
{
    return inClipboard("<basenode>" + p_modules + "</basenode>");
}

/** Loops in one another, the innermost with a block in it. */
QByteArray nested(int p_loops)
{
    return chainOf(QByteArray("<module id=\"303\"><left>").repeated(p_loops) + s_forward +
                   QByteArray("</left></module>").repeated(p_loops));
}

/** A text in UTF-16, as bytes. */
QByteArray utf16(const QString& p_text, bool p_withMark)
{
    const QString text = p_withMark ? QChar(QChar::ByteOrderMark) + p_text : p_text;
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

void put(const QByteArray& p_content, const char* p_format = s_blocks)
{
    auto* data = new QMimeData;
    data->setData(QLatin1String(p_format), p_content);
    QGuiApplication::clipboard()->setMimeData(data);
}
} // namespace

/**
 * What other programs may put on the clipboard, pasted by the user's own means. The canvas takes
 * the blocks that it knows and nothing else, and what was done before can still be taken back.
 */
class BadClipboardTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        // A chain with a body, a loose block that has a value, and something to take back.
        m_canvas = std::make_unique<CanvasFixture>();
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        m_canvas->drop(104, loop->scenePos() + QPointF(160, 20));
        supermodule* last = m_canvas->dropBehind(loop, 102);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 102}));
        m_canvas->drop(800, QPointF(500, 500));
        m_canvas->view.deleteModule(last);
        m_chain = QList<int>{0, 301};
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), m_chain);
        QCOMPARE(m_canvas->blocks().size(), 4);
        documentModified = false;
    }

    void cleanup()
    {
        m_canvas.reset();
        QVERIFY(moduleMap.isEmpty());
        QGuiApplication::clipboard()->clear();
    }

    void whatHoldsNoBlocksPastesNothing_data()
    {
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char* p_name, const QByteArray& p_text) {
            QTest::newRow(p_name) << p_text;
        };
        const QByteArray whole = chainOf(s_forward);
        // Not XML.
        row("nothing", QByteArray());
        row("a blank", " ");
        row("NULs", QByteArray(1000, '\0'));
        row("a NUL first", '\0' + whole);
        row("plain words", "move forward\nthen wait");
        row("a path", "file:///home/a/car.tlrx");
        row("bytes of a picture", QByteArray::fromHex("89504e470d0a1a0a0000000d49484452"));
        row("cut off", whole.left(whole.size() / 2));
        row("cut off by a NUL", QByteArray(whole).insert(whole.size() / 2, '\0'));
        row("two roots", whole + whole);
        row("words behind the root", whole + "and more");
        row("an unclosed block", chainOf("<module id=\"103\">"));
        row("an attribute without quotes", chainOf("<module id=103/>"));
        // XML of another shape.
        row("another document", "<html><body><p>text</p></body></html>");
        row("a root alone", "<vantrel/>");
        row("no block", chainOf(QByteArray()));
        row("blocks without their chain", inClipboard(s_forward));
        row("a chain as root", QByteArray("<basenode>") + s_forward + "</basenode>");
        row("a chain too far inside", inClipboard(chainOf(s_forward).mid(19)));
        row("other letters", inClipboard(QByteArray("<BaseNode>") + s_forward + "</BaseNode>"));
        row("a name with a prefix",
            inClipboard(QByteArray("<v:basenode xmlns:v=\"v\">") + s_forward + "</v:basenode>"));
        row("a comment", inClipboard(QByteArray("<!--<basenode>") + s_forward + "</basenode>-->"));
        row("a body without its loop",
            chainOf(QByteArray("<left>") + s_forward + "</left><right>" + s_forward + "</right>"));
        // Unknown types.
        row("an unknown type", chainOf("<module id=\"77\"/>"));
        row("types of another time",
            chainOf("<module id=\"401\"/><module id=\"404\"/><module id=\"433\"/>"
                    "<module id=\"-1\"/><module id=\"2147483647\"/>"));
        row("known blocks in an unknown one",
            chainOf(QByteArray("<module id=\"77\"><left>") + s_forward + "</left></module>"));
        row("many unknown chains",
            inClipboard(QByteArray("<basenode><module id=\"77\"/></basenode>").repeated(1000)));
        // Other encodings.
        const QString text = QString::fromLatin1(whole);
        row("UTF-16", utf16(text, false));
        row("UTF-16 with its mark", utf16(text, true));
        row("half a character in a name",
            chainOf(QByteArray(s_forward).replace("module", "mod\xED\xA0\xBDule")));
        row("the end of input as a character",
            QByteArray(whole).insert(whole.size() / 2, "\xEF\xBF\xBF"));
        // Against the reader's limits.
        row("a hundred thousand levels", nested(100000));
        row("a hundred thousand levels of anything",
            QByteArray("<a>").repeated(100000) + QByteArray("</a>").repeated(100000));
        row("a hundred thousand levels left open", QByteArray("<a>").repeated(100000));
        row("entities that multiply",
            "<!DOCTYPE a [<!ENTITY a \"aaaaaaaaaaaaaaaa\">]><vantrel><basenode>" +
                QByteArray("&a;").repeated(100000) + s_forward + "</basenode></vantrel>");
    }

    void whatHoldsNoBlocksPastesNothing()
    {
        QFETCH(QByteArray, text);
        for (const Way way : {Way::Key, Way::Menu}) {
            put(text);
            const QStringList before = content();
            documentModified = false;
            paste(way);
            QCOMPARE(content(), before);
            // A paste counts as a change, whatever comes of it.
            QVERIFY(documentModified);
            QCOMPARE(historyWorks(0), QString());
        }
    }

    void blocksArePastedAsFarAsTheyAreKnown_data()
    {
        columns<QByteArray, QList<int>, int>("text", "chain", "blocks");
        const auto row = [](const char* p_name, const QByteArray& p_text, const QList<int>& p_chain,
                            int p_blocks) {
            QTest::newRow(p_name) << p_text << p_chain << p_blocks;
        };
        const QByteArray forward(s_forward);
        const QByteArray whole = chainOf(forward);
        row("unknown types between known ones",
            chainOf("<module id=\"77\"/>" + forward +
                    "<module id=\"78\"/><module id=\"102\"/>"
                    "<module id=\"79\"/>"),
            {103, 102}, 2);
        row("an unknown type in a body",
            chainOf("<module id=\"301\"><left><module id=\"77\"/>" + forward + "</left></module>"),
            {301}, 2);
        row("a body that is unknown altogether",
            chainOf("<module id=\"301\"><left><module id=\"77\"/></left></module>" + forward),
            {301, 103}, 2);
        row("a chain of which nothing is known before another",
            inClipboard("<basenode><module id=\"77\"/></basenode><basenode/><basenode>" + forward +
                        "</basenode>"),
            {103}, 1);
        row("elements of no meaning",
            chainOf("<a><b/></a>" + forward + "words<c d=\"1\"/><module id=\"102\" wings=\"2\"/>"),
            {103, 102}, 2);
        row("any root", "<a><basenode>" + forward + "</basenode></a>", {103}, 1);
        row("an attribute twice", chainOf("<module id=\"103\" id=\"103\"/>"), {103}, 1);
        row("no values", chainOf("<module id=\"104\"/>"), {104}, 1);
        row("values that are none",
            chainOf("<module id=\"100\" n=\"fast\" x=\"1e99\" ownid=\"-\" moduleKey=\"&#9;\"/>"),
            {100}, 1);
        row("values at the edge of the numbers",
            chainOf(
                "<module id=\"100\" n=\"2147483647\" x=\"-2147483648\" moduleKey=\"2147483647\"/>"),
            {100}, 1);
        row("a NUL behind the text", whole + '\0' + "anything", {103}, 1);
        row("the mark of UTF-8", "\xEF\xBB\xBF" + whole, {103}, 1);
        row("blanks around the root", "\n \n" + whole + "\r\n", {103}, 1);
        // The clipboard's text is UTF-8, whatever it says of itself.
        row("it calls itself UTF-16", "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + whole, {103},
            1);
        row("it calls itself GBK", "<?xml version=\"1.0\" encoding=\"GBK\"?>" + whole, {103}, 1);
        row("it names an encoding that there isn't",
            "<?xml version=\"1.0\" encoding=\"tiler\"?>" + whole, {103}, 1);
        row("bytes of another encoding",
            chainOf("<module id=\"103\" name=\"\xB3\xB5\"/><!--\xFF\xFE-->"), {103}, 1);
        row("half a character", chainOf("<module id=\"103\" name=\"\xED\xA0\xBD\"/>"), {103}, 1);
        row("control characters", chainOf("<module id=\"103\" name=\"\x01\x7F\"/>"), {103}, 1);
        // A main block comes in only like this: it is a block like others.
        row("a whole project",
            inClipboard("<basenode><module id=\"0\"/>" + forward +
                        "</basenode><tagCheck value=\"1\"/>"),
            {0, 103}, 2);
    }

    void blocksArePastedAsFarAsTheyAreKnown()
    {
        QFETCH(QByteArray, text);
        QFETCH(QList<int>, chain);
        QFETCH(int, blocks);
        for (const Way way : {Way::Key, Way::Menu}) {
            put(text);
            paste(way);
            QCOMPARE(pastedChains(), QList<QList<int>>{chain});
            QCOMPARE(historyWorks(blocks), QString());
            QCOMPARE(pastedChains(), QList<QList<int>>{chain});
            m_canvas->view.undoStack().undo();
        }
    }

    void otherFormatsPasteNothingAndAreNotOffered_data()
    {
        QTest::addColumn<QByteArray>("format");
        for (const char* format :
             {"text/plain", "text/plain;charset=utf-8", "text/html", "text/xml", "application/xml",
              "text/uri-list", "application/x-dnditemdata", "korvane/tiler",
              "korvane/tiler/modules2", "Korvane/Tiler/Modules", " korvane/tiler/modules"}) {
            QTest::newRow(format) << QByteArray(format);
        }
    }

    void otherFormatsPasteNothingAndAreNotOffered()
    {
        QFETCH(QByteArray, format);
        put(chainOf(s_forward), format.constData());
        const QStringList before = content();
        m_canvas->press(QPointF(850, 100), Qt::RightButton);
        QVERIFY(!pasteAction()->isEnabled());
        m_canvas->view.contextMenu().close();
        paste();
        QCOMPARE(content(), before);
        QCOMPARE(historyWorks(0), QString());
        // It stays what it is for other programs.
        QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(QLatin1String(format)));
    }

    void anEmptiedClipboardPastesNothing()
    {
        QGuiApplication::clipboard()->clear();
        const QStringList before = content();
        paste();
        QCOMPARE(content(), before);
        QCOMPARE(historyWorks(0), QString());
    }

    void everyChainOfATextIsPasted()
    {
        put(inClipboard(QByteArray("<basenode>") + s_forward + s_forward +
                        "</basenode><basenode/><a/><basenode><module id=\"77\"/></basenode>"
                        "<basenode><module id=\"102\"/></basenode>"));
        paste();
        const auto chains = [this] { return pastedChains().toSet(); };
        QCOMPARE(chains(), (QSet<QList<int>>{{103, 103}, {102}}));
        QCOMPARE(historyWorks(3), QString());
        QCOMPARE(chains(), (QSet<QList<int>>{{103, 103}, {102}}));
    }

    void theDeepestChainThatAFileHoldsIsPastedAndADeeperOneIsNot()
    {
        put(nested(499));
        const QStringList before = content();
        paste();
        QCOMPARE(content(), before);
        QCOMPARE(historyWorks(0), QString());
        put(nested(498));
        paste();
        QCOMPARE(m_canvas->blocks().size(), 4 + 499);
        QCOMPARE(historyWorks(499), QString());
        const QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(m_canvas->view.saveFile(path));
        QCOMPARE(m_canvas->view.openFile(path), 0);
        QCOMPARE(m_canvas->blocks().size(), 4 + 499);
    }

    void aHundredThousandBlocksInOneChain()
    {
        const int count = 100000;
        put(chainOf(QByteArray(s_forward).repeated(count)));
        paste();
        QCOMPARE(m_canvas->blocks().size(), 4 + count);
        QApplication::processEvents();
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 4);
        m_canvas->view.undoStack().undo();
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 301, 102}));
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
    }

    void aTextLargerThanAnyProjectIsPutAside()
    {
        // Blanks behind the root, up to the limit and one beyond it.
        const QByteArray text = chainOf(s_forward);
        const int most = static_cast<int>(MaximalProjectSize);
        put(text + QByteArray(most + 1 - text.size(), ' '));
        const QStringList before = content();
        paste();
        QCOMPARE(content(), before);
        QCOMPARE(historyWorks(0), QString());
        put(text + QByteArray(most - text.size(), ' '));
        paste();
        QCOMPARE(pastedChains(), (QList<QList<int>>{{103}}));
    }

    void aKeyPastesWhereTheMouseIs()
    {
        put(chainOf(s_forward));
        const QPointF place(650, 80);
        QCursor::setPos(m_canvas->view.viewport()->mapToGlobal(m_canvas->at(place)));
        paste();
        QCOMPARE(moduleMap.last()->scenePos(), place);
        // The menu's entry goes by the widget's own place instead, wherever the mouse is.
        paste(Way::Menu);
        const TzProgramView& view = m_canvas->view;
        QCOMPARE(moduleMap.last()->scenePos(), view.mapToScene(view.mapFromGlobal(view.pos())));
    }

private:
    void paste(Way p_way = Way::Key)
    {
        if (p_way == Way::Key) {
            m_canvas->key(Qt::Key_V, Qt::ControlModifier);
            return;
        }
        m_canvas->press(QPointF(850, 100), Qt::RightButton);
        QAction* action = pasteAction();
        QVERIFY(action->isEnabled());
        action->trigger();
        m_canvas->view.contextMenu().close();
    }
    QAction* pasteAction() { return m_canvas->view.contextMenu().actions().at(1); }
    /** The blocks, their keys and values, whatever the history says. */
    QStringList content()
    {
        const QStringList lines = documentPicture(m_canvas->view);
        QStringList kept;
        for (const QString& line : lines) {
            if (!line.startsWith(QLatin1String("history")) &&
                !line.startsWith(QLatin1String("modified"))) {
                kept.append(line);
            }
        }
        return kept;
    }
    /** The heads of the loose chains but for the one of the start, by their types. */
    QList<QList<int>> pastedChains()
    {
        QList<QList<int>> chains;
        for (const supermodule* block : m_canvas->blocks()) {
            if (!block->parentModule() && block != m_canvas->main() && block->id != 800) {
                chains.append(CanvasFixture::ids(block));
            }
        }
        return chains;
    }
    /** Undo and redo after a paste of p_blocks blocks: empty if all goes well. */
    QString historyWorks(int p_blocks)
    {
        QUndoStack& history = m_canvas->view.undoStack();
        const auto state = [&](int p_index, int p_count, const QList<int>& p_chain) {
            QStringList wrong = m_canvas->brokenInvariants();
            if (history.index() != p_index || m_canvas->blocks().size() != p_count ||
                CanvasFixture::ids(m_canvas->main()) != p_chain) {
                wrong << QStringLiteral("step %1 with %2 blocks, %3 in the chain")
                             .arg(history.index())
                             .arg(m_canvas->blocks().size())
                             .arg(CanvasFixture::ids(m_canvas->main()).size());
            }
            return wrong.join(QLatin1Char('\n'));
        };
        const QList<int> before = m_chain + QList<int>{102};
        if (p_blocks == 0) {
            // Not a step of its own.
            QString wrong = state(1, 4, m_chain);
            m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
            wrong += state(0, 5, before);
            m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
            return wrong + state(1, 4, m_chain);
        }
        QString wrong = state(2, 4 + p_blocks, m_chain);
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        wrong += state(1, 4, m_chain);
        m_canvas->key(Qt::Key_Z, Qt::ControlModifier);
        wrong += state(0, 5, before);
        m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
        wrong += state(1, 4, m_chain);
        m_canvas->key(Qt::Key_Y, Qt::ControlModifier);
        wrong += state(2, 4 + p_blocks, m_chain);
        return wrong;
    }

    std::unique_ptr<CanvasFixture> m_canvas;
    QList<int> m_chain;
};

QTEST_MAIN(BadClipboardTest)
#include "badclipboardtest.moc"
