#include "document/clipboard.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "support/canvas/canvastest.h"

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
class ClipboardTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void init()
    {
        clipboard().clear();
        m_canvas.emplace();
    }

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
        supermodule* speed = m_canvas->dropBehind(m_canvas->main(), 100);
        speed->setParamIndex(2);
        m_canvas->dropBehind(speed, 103);
        copy(*m_canvas, speed);
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
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* loop = m_canvas->dropBehind(first, 301);
        m_canvas->drop(101, loop->scenePos() + QPointF(160, 20));
        m_canvas->dropBehind(loop, 102);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 301, 102}));
        copy(*m_canvas, loop);
        QVERIFY(!hasFrame(first));
        QVERIFY(hasFrame(loop) && hasFrame(loop->left()) && hasFrame(loop->next()));
        m_canvas->view.OnPaste();
        QCOMPARE(m_canvas->blocks().size(), 8);
        supermodule* pasted = moduleMap.last()->rootOf();
        QCOMPARE(CanvasFixture::ids(pasted), (QList<int>{301, 102}));
        QCOMPARE(CanvasFixture::ids(pasted->left()), QList<int>{101});
        QVERIFY(!pasted->parentModule());
        for (const supermodule* block : {pasted, pasted->left(), pasted->next()}) {
            QCOMPARE(block->opacity(), 0.5);
            QVERIFY(!hasFrame(block));
        }
    }

    void theNoticeOfACopyItselfMayComeLate()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        {
            // As on systems where the clipboard tells of a change by and by.
            const QSignalBlocker late(&clipboard());
            copy(*m_canvas, first);
        }
        emit clipboard().changed(QClipboard::Clipboard);
        QVERIFY(hasFrame(first));
        emit clipboard().changed(QClipboard::Clipboard);
        QVERIFY(!hasFrame(first));
    }

    void aSecondCopyTakesTheFramesAlong()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* other = m_canvas->drop(104, QPointF(700, 450));
        copy(*m_canvas, first);
        QVERIFY(hasFrame(first));
        m_canvas->press(other->scenePos() + QPointF(30, 30), Qt::RightButton);
        m_canvas->view.contextMenu().actions().at(0)->trigger();
        m_canvas->view.contextMenu().close();
        QVERIFY(hasFrame(other));
        QVERIFY(!hasFrame(first));
        QVERIFY(blocksText().contains(QStringLiteral("id=\"104\"")));
    }

    void afterACopyNoBlockIsAtHand()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        copy(*m_canvas, first);
        QVERIFY(!m_canvas->view.currentModule());
        m_canvas->key(Qt::Key_Delete);
        QCOMPARE(m_canvas->blocks().size(), 2);
        // Nothing at hand is nothing to copy, also on the empty ground.
        m_canvas->key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(ClipBoard::hasFormat(s_blocks));
        QVERIFY(!blocksText().contains(QStringLiteral("<module")));
        m_canvas->click(QPointF(700, 550));
        m_canvas->key(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(ClipBoard::hasFormat(s_blocks));
        m_canvas->view.OnPaste();
        QCOMPARE(m_canvas->blocks().size(), 2);
    }

    void aPastedBlockHasAKeyOfItsOwnAndKeepsWhatTheTextSays()
    {
        const int key = nextModuleKey;
        ClipBoard::setData(s_blocks,
                           QStringLiteral("<vantrel><basenode><module id=\"103\" ownid=\"7\" "
                                          "moduleKey=\"%1\"/></basenode></vantrel>")
                               .arg(m_canvas->main()->moduleKey));
        m_canvas->view.OnPaste();
        supermodule* first = moduleMap.value(key);
        QVERIFY(first);
        m_canvas->view.OnPaste();
        supermodule* second = moduleMap.value(key + 1);
        QVERIFY(second);
        for (const supermodule* pasted : {first, second}) {
            QCOMPARE(pasted->id, 103);
            QCOMPARE(pasted->moduleKey, m_canvas->main()->moduleKey);
            QCOMPARE(pasted->ownid, 7);
        }
        // The one that is meant goes, whoever else has its stored key.
        m_canvas->view.deleteModule(first);
        QCOMPARE(moduleMap.value(key), nullptr);
        QCOMPARE(moduleMap.value(key + 1), second);
        QCOMPARE(moduleMap.value(m_canvas->main()->registryKey()),
                 static_cast<supermodule*>(m_canvas->main()));
        QCOMPARE(m_canvas->blocks().size(), 2);
    }

    void deletingTheCopiedBlockEmptiesTheClipboard()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* second = m_canvas->dropBehind(first, 104);
        copy(*m_canvas, first);
        m_canvas->view.deleteModule(second);
        QVERIFY(ClipBoard::hasFormat(s_blocks));
        m_canvas->view.deleteModule(first);
        QVERIFY(!ClipBoard::hasFormat(s_blocks));
        QCOMPARE(clipboard().text(), QString());
    }

    void aLeftPressEmptiesTheClipboardAndARightOneDoesNot()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        for (const QPointF& place : {first->scenePos() + QPointF(30, 30), QPointF(700, 550)}) {
            copy(*m_canvas, first);
            m_canvas->rightClick(place);
            QVERIFY(ClipBoard::hasFormat(s_blocks));
            QVERIFY(hasFrame(first));
            m_canvas->click(place);
            QVERIFY(!ClipBoard::hasFormat(s_blocks));
            QVERIFY(!hasFrame(first));
        }
    }

    void whatSomebodyElsePutOnTheClipboardStays()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        const QPointF ground(700, 550);
        const QString text = QStringLiteral("text");
        clipboard().setText(text);
        m_canvas->click(ground);
        QCOMPARE(clipboard().text(), text);
        // Also behind a copy of this window's own, whose frame went with it.
        copy(*m_canvas, first);
        clipboard().setText(text);
        QVERIFY(!hasFrame(first));
        m_canvas->click(ground);
        m_canvas->click(first->scenePos() + QPointF(30, 30));
        QCOMPARE(clipboard().text(), text);
        // And blocks that are another window's.
        copy(*m_canvas, first);
        const QString others = QStringLiteral("<vantrel><basenode><module id=\"104\"/></basenode>"
                                              "</vantrel>");
        ClipBoard::setData(s_blocks, others);
        m_canvas->click(ground);
        QCOMPARE(blocksText(), others);
        const int before = m_canvas->blocks().size();
        m_canvas->key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(m_canvas->blocks().size(), before + 1);
    }

    void deletingTheCopiedBlockLeavesWhatIsSomebodyElses()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        copy(*m_canvas, first);
        clipboard().setText(QStringLiteral("text"));
        m_canvas->view.deleteModule(first);
        QCOMPARE(clipboard().text(), QStringLiteral("text"));
    }

    void aPressOnTheRootOfASubProgramKeepsTheCopy()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        for (const int id : {FirstSubProgramId, LastSubProgramId}) {
            auto* root = new subRoot(id, QString(), QString(), QString());
            root->createCollisions();
            root->setFlags(QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
            m_canvas->view.scene()->addItem(root);
            root->setPos(700, 400);
            copy(*m_canvas, first);
            m_canvas->click(root->scenePos() + QPointF(30, 30));
            QCOMPARE(m_canvas->view.currentModule(), root);
            QVERIFY(ClipBoard::hasFormat(s_blocks));
            QVERIFY(hasFrame(first));
            // Linked to what was copied it gets its frame, too.
            m_canvas->drag(root,
                           (first->scenePos() + QPointF(125, 5) - root->scenePos()).toPoint());
            QCOMPARE(root->parentModule(), first);
            QVERIFY(hasFrame(root));
            supermodule* dropped = m_canvas->drop(104, first->scenePos() + QPointF(190, 5));
            QCOMPARE(first->next(), dropped);
            QVERIFY(hasFrame(dropped));
            first->removeChild(dropped);
            supermodule::deleteTree(dropped);
        }
    }

    void theMenuTakesACopyBack()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        copy(*m_canvas, first);
        m_canvas->press(QPointF(700, 550), Qt::RightButton);
        QAction* undoCopy = m_canvas->view.contextMenu().actions().at(3);
        QVERIFY(undoCopy->isEnabled());
        undoCopy->trigger();
        m_canvas->view.contextMenu().close();
        QVERIFY(!hasFrame(first));
        QVERIFY(!ClipBoard::hasFormat(s_blocks));
        m_canvas->press(QPointF(700, 550), Qt::RightButton);
        QVERIFY(!undoCopy->isEnabled());
        m_canvas->view.contextMenu().close();
    }

    void copyingTextElsewhereHidesTheSelectionFrames()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->rightClick(first->scenePos() + QPointF(30, 30));
        m_canvas->view.OnCopy();
        QVERIFY(hasFrame(first));
        QCoreApplication::processEvents();
        QVERIFY(hasFrame(first));
        clipboard().setText(QStringLiteral("another program's"));
        QCoreApplication::processEvents();
        QVERIFY(!hasFrame(first));
    }

    void aTextThatIsOnlySelectedElsewhereKeepsTheFrames()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        copy(*m_canvas, first);
        emit clipboard().changed(QClipboard::Selection);
        QVERIFY(hasFrame(first));
        emit clipboard().changed(QClipboard::Clipboard);
        QVERIFY(!hasFrame(first));
    }
};

QTEST_MAIN(ClipboardTest)
#include "clipboardtest.moc"
