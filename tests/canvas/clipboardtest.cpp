#include "document/clipboard.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "support/canvas/canvasfixture.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTest>

namespace
{
const QString s_blocks = QStringLiteral("korvane/tiler/modules");

QClipboard& clipboard() { return *QGuiApplication::clipboard(); }

QString blocksText() { return ClipBoard::data(s_blocks); }

/** Stands for the root of a sub-program, for which the program has no class yet. */
class subRoot : public supermodule
{
public:
    using supermodule::supermodule;
    QString cCode() const override { return QString(); }
    supermodule* clone() const override { return nullptr; }
};

/** The copied blocks bear frames. */
bool hasFrame(const supermodule* p_module)
{
    for (const QGraphicsItem* child : p_module->childItems()) {
        const auto* frame = qgraphicsitem_cast<const QGraphicsPixmapItem*>(child);
        if (frame && frame->isVisible()) {
            return true;
        }
    }
    return false;
}

/** A left press takes a block in hand, and the key copies it. */
void copy(CanvasFixture& p_canvas, const supermodule* p_module)
{
    p_canvas.click(p_module->scenePos() + QPointF(30, 30));
    p_canvas.key(Qt::Key_C, Qt::ControlModifier);
}
} // namespace

/** What a copy puts on the clipboard and what becomes of it there. */
class ClipboardTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { clipboard().clear(); }

    void aTextIsFoundUnderItsFormatAlone()
    {
        const QString format = QStringLiteral("korvane/tiler/other");
        // Without any data at all it is empty, but not null.
        QVERIFY(!clipboard().mimeData());
        QVERIFY(!ClipBoard::hasFormat(format));
        QVERIFY(ClipBoard::data(format).isEmpty() && !ClipBoard::data(format).isNull());
        ClipBoard::setData(format, QStringLiteral("车 car"));
        QVERIFY(ClipBoard::hasFormat(format));
        QVERIFY(!ClipBoard::hasFormat(s_blocks));
        QCOMPARE(clipboard().mimeData()->data(format), QByteArray("\xE8\xBD\xA6 car"));
        QVERIFY(!clipboard().mimeData()->hasText());
        QCOMPARE(ClipBoard::data(format), QStringLiteral("车 car"));
        QVERIFY(ClipBoard::data(s_blocks).isNull());
        // Up to its first zero byte.
        ClipBoard::setData(format, QStringLiteral("car") + QChar(0) + QStringLiteral("wheel"));
        QCOMPARE(ClipBoard::data(format), QStringLiteral("car"));
        ClipBoard::setData(format, QString());
        QVERIFY(ClipBoard::hasFormat(format));
        QCOMPARE(ClipBoard::data(format), QString());
    }

    void aCopyIsAProjectOfOneChainWithoutTag()
    {
        CanvasFixture canvas;
        supermodule* speed = canvas.dropBehind(canvas.main(), 100);
        speed->setParamIndex(2);
        canvas.dropBehind(speed, 103);
        copy(canvas, speed);
        QCOMPARE(clipboard().mimeData()->formats(), QStringList{s_blocks});
        // The order of attributes is Qt's own.
        QStringList lines = blocksText().split(QLatin1Char('\n'));
        for (QString& line : lines) {
            const int indent = line.indexOf(QLatin1String("<module "));
            if (indent >= 0) {
                QStringList words =
                    line.trimmed().remove(QLatin1String("/>")).split(QLatin1Char(' '));
                words.sort();
                line = QString(indent, QLatin1Char(' ')) + words.join(QLatin1Char(' '));
            }
        }
        QCOMPARE(
            lines.join(QLatin1Char('\n')),
            QStringLiteral("<!DOCTYPE vantrel>\n"
                           "<vantrel>\n"
                           " <basenode>\n"
                           "  <module id=\"100\" moduleKey=\"0\" n=\"2\" ownid=\"0\" x=\"240\" "
                           "y=\"200\"\n"
                           "  <module id=\"103\" moduleKey=\"0\" ownid=\"0\" x=\"360\" y=\"200\"\n"
                           " </basenode>\n"
                           "</vantrel>\n"));
    }

    void aCopyTakesBodiesAndWhatFollowsButNotWhatStandsBefore()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* loop = canvas.dropBehind(first, 301);
        canvas.drop(101, loop->scenePos() + QPointF(160, 20));
        canvas.dropBehind(loop, 102);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 301, 102}));
        copy(canvas, loop);
        QVERIFY(!hasFrame(first));
        QVERIFY(hasFrame(loop) && hasFrame(loop->left()) && hasFrame(loop->next()));
        canvas.view.OnPaste();
        QCOMPARE(canvas.blocks().size(), 8);
        supermodule* pasted = moduleMap.last()->rootOf();
        QCOMPARE(CanvasFixture::ids(pasted), (QList<int>{301, 102}));
        QCOMPARE(CanvasFixture::ids(pasted->left()), QList<int>{101});
        QVERIFY(!pasted->parentModule());
        for (const supermodule* block : {pasted, pasted->left(), pasted->next()}) {
            QCOMPARE(block->opacity(), 0.5);
            QVERIFY(!hasFrame(block));
        }
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void theNoticeOfACopyItselfMayComeLate()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        {
            // As on systems where the clipboard tells of a change by and by.
            const QSignalBlocker late(&clipboard());
            copy(canvas, first);
        }
        emit clipboard().changed(QClipboard::Clipboard);
        QVERIFY(hasFrame(first));
        emit clipboard().changed(QClipboard::Clipboard);
        QVERIFY(!hasFrame(first));
    }

    void aSecondCopyTakesTheFramesAlong()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* other = canvas.drop(104, QPointF(700, 450));
        copy(canvas, first);
        QVERIFY(hasFrame(first));
        canvas.press(other->scenePos() + QPointF(30, 30), Qt::RightButton);
        canvas.view.contextMenu().actions().at(0)->trigger();
        canvas.view.contextMenu().close();
        QVERIFY(hasFrame(other));
        QVERIFY(!hasFrame(first));
        QVERIFY(blocksText().contains(QStringLiteral("id=\"104\"")));
    }

    void afterACopyNoBlockIsAtHand()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        copy(canvas, first);
        QVERIFY(!canvas.view.currentModule());
        canvas.key(Qt::Key_Delete);
        QCOMPARE(canvas.blocks().size(), 2);
        // Nothing at hand is nothing to copy.
        canvas.key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(ClipBoard::hasFormat(s_blocks));
        QVERIFY(!blocksText().contains(QStringLiteral("<module")));
    }

    void aPastedBlockHasAKeyOfItsOwnAndKeepsWhatTheTextSays()
    {
        CanvasFixture canvas;
        const int key = nextModuleKey;
        ClipBoard::setData(s_blocks,
                           QStringLiteral("<vantrel><basenode><module id=\"103\" ownid=\"7\" "
                                          "moduleKey=\"%1\"/></basenode></vantrel>")
                               .arg(canvas.main()->moduleKey));
        canvas.view.OnPaste();
        supermodule* first = moduleMap.value(key);
        QVERIFY(first);
        canvas.view.OnPaste();
        supermodule* second = moduleMap.value(key + 1);
        QVERIFY(second);
        for (const supermodule* pasted : {first, second}) {
            QCOMPARE(pasted->id, 103);
            QCOMPARE(pasted->moduleKey, canvas.main()->moduleKey);
            QCOMPARE(pasted->ownid, 7);
        }
        // The one that is meant goes, whoever else has its stored key.
        canvas.view.deleteModule(first);
        QCOMPARE(moduleMap.value(key), nullptr);
        QCOMPARE(moduleMap.value(key + 1), second);
        QCOMPARE(moduleMap.value(canvas.main()->registryKey()),
                 static_cast<supermodule*>(canvas.main()));
        QCOMPARE(canvas.blocks().size(), 2);
    }

    void deletingTheCopiedBlockEmptiesTheClipboard()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* second = canvas.dropBehind(first, 104);
        copy(canvas, first);
        canvas.view.deleteModule(second);
        QVERIFY(ClipBoard::hasFormat(s_blocks));
        canvas.view.deleteModule(first);
        QVERIFY(!ClipBoard::hasFormat(s_blocks));
        QCOMPARE(clipboard().text(), QString());
    }

    void aLeftPressEmptiesTheClipboardAndARightOneDoesNot()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        for (const QPointF& place : {first->scenePos() + QPointF(30, 30), QPointF(700, 550)}) {
            copy(canvas, first);
            canvas.press(place, Qt::RightButton);
            canvas.view.contextMenu().close();
            QVERIFY(ClipBoard::hasFormat(s_blocks));
            QVERIFY(hasFrame(first));
            canvas.click(place);
            QVERIFY(!ClipBoard::hasFormat(s_blocks));
            QVERIFY(!hasFrame(first));
        }
    }

    void whatSomebodyElsePutOnTheClipboardStays()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        const QPointF ground(700, 550);
        const QString text = QStringLiteral("text");
        clipboard().setText(text);
        canvas.click(ground);
        QCOMPARE(clipboard().text(), text);
        // Also behind a copy of this window's own, whose frame went with it.
        copy(canvas, first);
        clipboard().setText(text);
        QVERIFY(!hasFrame(first));
        canvas.click(ground);
        canvas.click(first->scenePos() + QPointF(30, 30));
        QCOMPARE(clipboard().text(), text);
        // And blocks that are another window's.
        copy(canvas, first);
        const QString others = QStringLiteral("<vantrel><basenode><module id=\"104\"/></basenode>"
                                              "</vantrel>");
        ClipBoard::setData(s_blocks, others);
        canvas.click(ground);
        QCOMPARE(blocksText(), others);
        const int before = canvas.blocks().size();
        canvas.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(canvas.blocks().size(), before + 1);
    }

    void deletingTheCopiedBlockLeavesWhatIsSomebodyElses()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        copy(canvas, first);
        clipboard().setText(QStringLiteral("text"));
        canvas.view.deleteModule(first);
        QCOMPARE(clipboard().text(), QStringLiteral("text"));
    }

    void aPressOnTheRootOfASubProgramKeepsTheCopy()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        for (const int id : {FirstSubProgramId, LastSubProgramId}) {
            auto* root = new subRoot(id, QString(), QString(), QString());
            root->createCollisions();
            root->setFlags(QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
            canvas.view.scene()->addItem(root);
            root->setPos(700, 400);
            copy(canvas, first);
            canvas.click(root->scenePos() + QPointF(30, 30));
            QCOMPARE(canvas.view.currentModule(), root);
            QVERIFY(ClipBoard::hasFormat(s_blocks));
            QVERIFY(hasFrame(first));
            // Linked to what was copied it gets its frame, too.
            canvas.drag(root, (first->scenePos() + QPointF(125, 5) - root->scenePos()).toPoint());
            QCOMPARE(root->parentModule(), first);
            QVERIFY(hasFrame(root));
            supermodule* dropped = canvas.drop(104, first->scenePos() + QPointF(190, 5));
            QCOMPARE(first->next(), dropped);
            QVERIFY(hasFrame(dropped));
            first->removeChild(dropped);
            supermodule::deleteTree(dropped);
        }
    }

    void theMenuTakesACopyBack()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        copy(canvas, first);
        canvas.press(QPointF(700, 550), Qt::RightButton);
        QAction* undoCopy = canvas.view.contextMenu().actions().at(3);
        QVERIFY(undoCopy->isEnabled());
        undoCopy->trigger();
        canvas.view.contextMenu().close();
        QVERIFY(!hasFrame(first));
        QVERIFY(!ClipBoard::hasFormat(s_blocks));
        canvas.press(QPointF(700, 550), Qt::RightButton);
        QVERIFY(!undoCopy->isEnabled());
        canvas.view.contextMenu().close();
    }

    void aTextThatIsOnlySelectedElsewhereKeepsTheFrames()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        copy(canvas, first);
        emit clipboard().changed(QClipboard::Selection);
        QVERIFY(hasFrame(first));
        emit clipboard().changed(QClipboard::Clipboard);
        QVERIFY(!hasFrame(first));
    }
};

QTEST_MAIN(ClipboardTest)
#include "clipboardtest.moc"
