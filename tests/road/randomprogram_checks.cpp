#include "actions/model/actionimage.h"
#include "canvas/blockmark.h"
#include "canvas/moduleat.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduletree.h"
#include "project/projectfile.h"
#include "randomprogram.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentinvariants.h"
#include "support/canvas/documentpicture.h"
#include "support/system/answers.h"

#include <QApplication>
#include <QDir>
#include <QGraphicsSceneDragDropEvent>
#include <QMimeData>
#include <QTest>
#include <QTextBrowser>

namespace
{
const char s_chainBegin[] = "    <basenode>\n";

/** A project's text cut before each chain; the last piece has the check tag behind its chain. */
QList<QByteArray> chainsOf(const QByteArray& p_text)
{
    QList<QByteArray> pieces;
    int from = 0;
    for (int at = p_text.indexOf(s_chainBegin); at >= 0;
         at = p_text.indexOf(s_chainBegin, at + 1)) {
        pieces.append(p_text.mid(from, at - from));
        from = at;
    }
    pieces.append(p_text.mid(from));
    return pieces;
}

/**
 * What a project's text is when it was opened and saved once: the loose chains, which come before
 * the main block's, are the other way round.
 */
QByteArray turnedRound(const QByteArray& p_text)
{
    QList<QByteArray> pieces = chainsOf(p_text);
    std::reverse(pieces.begin() + 1, pieces.end() - 1);
    return pieces.join();
}

QString withoutBlanks(const QString& p_text)
{
    QString text = p_text;
    return text.remove(QChar::ParagraphSeparator).simplified().remove(QLatin1Char(' '));
}

QStringList difference(const QString& p_what, const QByteArray& p_found,
                       const QByteArray& p_expected)
{
    if (p_found == p_expected) {
        return {};
    }
    return {p_what + QStringLiteral(":\n") + QString::fromUtf8(p_found) +
            QStringLiteral("\nand not:\n") + QString::fromUtf8(p_expected)};
}
} // namespace

QStringList RandomProgram::save()
{
    // A document without a name asks for one.
    const QString path = QDir(m_folder).filePath(QStringLiteral("program.tlrx"));
    Answers answers(m_window.fileName().isEmpty() ? QVariantList{path} : QVariantList());
    if (m_window.OnSaveFile() != 0 || m_window.fileName() != path) {
        return {QStringLiteral("the project can't be saved")};
    }
    return {};
}

QStringList RandomProgram::brokenTrip()
{
    const QStringList chains = documentOutline(m_view, Telling::Parameters);
    const QString code = text();
    const QByteArray actions = m_window.document().actions().bytes();
    QStringList broken;
    QList<QByteArray> files;
    for (int round = 0; round < 3 && broken.isEmpty(); ++round) {
        broken += save();
        const QString path = m_window.fileName();
        files.append(readWhole(path));
        // Nothing may be left that the file doesn't bring.
        m_window.OnNewFile();
        m_window.openPath(path);
        broken += brokenInvariants(m_view);
        if (documentOutline(m_view, Telling::Parameters) != chains) {
            broken << QStringLiteral("the opened project has other chains:\n") + description();
        }
        if (text() != code) {
            broken << QStringLiteral("the opened project gives another text:\n") + text() +
                          QStringLiteral("\nand not:\n") + code;
        }
        if (files.last().right(ProjectTailSize) != actions) {
            broken << QStringLiteral("the saved project has other actions");
        }
    }
    if (!broken.isEmpty()) {
        return broken;
    }
    for (QByteArray& file : files) {
        file.chop(ProjectTailSize);
    }
    m_project = files.first();
    // To the letter, times included: what is in a file is what was opened.
    broken += difference(QStringLiteral("saved a second time the project is"), files.at(1),
                         turnedRound(files.at(0)));
    broken +=
        difference(QStringLiteral("saved a third time the project is"), files.at(2), files.at(0));
    return broken;
}

QStringList RandomProgram::brokenCodePane()
{
    QTextBrowser& pane = *m_window.codeBrowser();
    if (!pane.isVisible()) {
        m_window.OnShowCode(CCode);
    }
    const QWidget* mark = m_view.viewport()->findChild<BlockMark*>();
    const QString code = text();
    if (pane.toPlainText() != code) {
        return {QStringLiteral("the code pane holds\n") + pane.toPlainText()};
    }
    QStringList broken;
    int inProgram = 0;
    int begins = -1;
    const auto check = [&](supermodule* p_block) {
        // Where the next block's notch is not.
        const QPointF point = p_block->scenePos() + QPointF(14, 14);
        showPoint(point);
        hover(at(point));
        QGraphicsItem& logo = m_view.document().scene().logo();
        if (pressTarget(m_view, m_view.mapToScene(at(point)), logo).module != p_block) {
            return;
        }
        const QList<QTextEdit::ExtraSelection> lit = pane.extraSelections();
        const QString fragment = withoutBlanks(p_block->cCode());
        const QString name = QString::number(p_block->id);
        const QTextCursor cursor = lit.isEmpty() ? QTextCursor() : lit.first().cursor;
        if (lit.size() > 1 || withoutBlanks(cursor.selectedText()) != fragment) {
            broken << name + QStringLiteral(" lights ") + cursor.selectedText();
            return;
        }
        ++inProgram;
        if (cursor.selectionStart() < begins) {
            broken << name + QStringLiteral(" is lit before the block in front of it");
        }
        begins = cursor.selectionStart();
        QTextCursor press(pane.document());
        press.setPosition(cursor.selectionStart());
        pane.setTextCursor(press);
        QTest::mousePress(pane.viewport(), Qt::LeftButton, Qt::NoModifier,
                          pane.cursorRect(press).center() + QPoint(1, 0));
        const QRect block = m_view.mapFromScene(p_block->sceneBoundingRect()).boundingRect();
        // A loop around the block begins further left.
        const QPoint way = block.topLeft() - mark->geometry().topLeft();
        if (!mark->isVisible() || way.x() < 0 || way.y() < 0 || way.manhattanLength() > 20) {
            broken << QStringLiteral("a press on the text of ") + name +
                          QStringLiteral(" does not point at it");
        }
    };
    forEachModule(m_view.mainBlock(), check);
    m_tally[QStringLiteral("blocks found in the text")] += inProgram;
    return broken;
}

supermodule* RandomProgram::someBlock()
{
    QList<supermodule*> all = blocks();
    if (all.size() > 1) {
        all.removeOne(m_view.mainBlock());
    }
    return all.at(below(all.size()));
}

supermodule* RandomProgram::click(const supermodule* p_block)
{
    const QPointF point = p_block->scenePos() + QPointF(14, 14);
    showPoint(point);
    mouse(QEvent::MouseButtonPress, at(point));
    mouse(QEvent::MouseButtonRelease, at(point));
    // Another one, where that covers it.
    return m_view.currentModule();
}

supermodule* RandomProgram::pasteSomewhere()
{
    const int firstKey = nextModuleKey;
    QCursor::setPos(m_view.viewport()->mapToGlobal(somePoint()));
    key(Qt::Key_V, Qt::ControlModifier);
    // Keys are given from the innermost body of the first block on.
    supermodule* pasted = moduleMap.value(firstKey);
    return pasted ? pasted->rootOf() : nullptr;
}

QStringList RandomProgram::brokenCopy()
{
    const State before = state();
    const int count = blocks().size();
    const supermodule* source = click(someBlock());
    if (!source || source == m_view.mainBlock()) {
        return {};
    }
    ++m_tally[QStringLiteral("copies")];
    const QString expected = copyOutline(source);
    key(Qt::Key_C, Qt::ControlModifier);
    QStringList broken;
    for (int paste = 1; paste <= 3; ++paste) {
        supermodule* pasted = pasteSomewhere();
        if (!pasted) {
            return {QStringLiteral("paste %1 gives nothing").arg(paste)};
        }
        const QString found = chainOutline(pasted, Telling::Parameters);
        if (found != expected) {
            broken << QStringLiteral("paste %1 gives\n%2\nand not, by copiedParameters(),\n%3")
                          .arg(paste)
                          .arg(found, expected);
        }
        const int each = found.count(QLatin1String(" > ")) + found.count(QLatin1Char('[')) + 1;
        if (blocks().size() != count + paste * each) {
            broken << QStringLiteral("after paste %1 there are %2 blocks, not %3")
                          .arg(paste)
                          .arg(blocks().size())
                          .arg(count + paste * each);
        }
        if (text() != before.text) {
            broken << QStringLiteral("paste %1 has changed the text").arg(paste);
        }
        // The last copy is one of a copy, where there is nothing more to lose.
        if (paste == 2) {
            const supermodule* copied = click(pasted);
            if (copied != pasted) {
                break;
            }
            ++m_tally[QStringLiteral("copies of copies")];
            key(Qt::Key_C, Qt::ControlModifier);
        }
    }
    broken += brokenInvariants(m_view);
    while (m_view.undoStack().canUndo()) {
        key(Qt::Key_Z, Qt::ControlModifier);
    }
    return broken + unlike(before, QStringLiteral("after the undo of all pastes"));
}

RandomProgram::State RandomProgram::state() const
{
    return {documentOutline(m_view, Telling::Everything), text()};
}

QStringList RandomProgram::unlike(const State& p_expected, const QString& p_when) const
{
    QStringList broken = brokenInvariants(m_view);
    const State now = state();
    if (now.outline != p_expected.outline) {
        broken << p_when + QStringLiteral(" there is\n") + now.outline.join(QLatin1Char('\n')) +
                      QStringLiteral("\nand not\n") + p_expected.outline.join(QLatin1Char('\n'));
    }
    if (now.text != p_expected.text) {
        broken << p_when + QStringLiteral(" the text is\n") + now.text +
                      QStringLiteral("\nand not\n") + p_expected.text;
    }
    return broken;
}

void RandomProgram::addThroughScene()
{
    const int type = nextType();
    const std::unique_ptr<supermodule> sample(createModuleFromId(type));
    const QSizeF size = sample->boundingRect().size();
    QPointF origin = emptyPlace(size);
    if (below(6) != 0) {
        const supermodule* owner = someBlock();
        const collisionItem* connector = owner->connector(below(2) == 0 ? NextLink : LeftLink);
        connector = connector ? connector : owner->connector(NextLink);
        if (connector) {
            origin = connector->scenePos() + QPointF(0, 30 - size.height() / 2);
        }
    }
    const std::unique_ptr<QMimeData> data(blockDrag(type));
    QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
    drop.setMimeData(data.get());
    drop.setScenePos(origin + QPointF(size.width() / 2, 0));
    QApplication::sendEvent(m_view.scene(), &drop);
}

void RandomProgram::pasteCopy()
{
    const supermodule* source = click(someBlock());
    if (source && source != m_view.mainBlock()) {
        key(Qt::Key_C, Qt::ControlModifier);
        pasteSomewhere();
    }
}

void RandomProgram::deleteByKey()
{
    click(someBlock());
    key(Qt::Key_Delete);
}

void RandomProgram::throwAway()
{
    const supermodule* block = someBlock();
    if (block == m_view.mainBlock()) {
        return;
    }
    const QPointF point = block->scenePos() + QPointF(14, 14);
    showPoint(point);
    mouse(QEvent::MouseButtonPress, at(point));
    if (m_view.currentModule() == m_view.mainBlock()) {
        mouse(QEvent::MouseButtonRelease, at(point));
        return;
    }
    const QPoint bin(somePoint().x(), m_view.viewport()->height() + 60);
    for (int step = 1; step <= 3; ++step) {
        mouse(QEvent::MouseMove, at(point) + (bin - at(point)) * step / 3);
    }
    mouse(QEvent::MouseButtonRelease, bin);
}

QString RandomProgram::doSomething(bool p_adds)
{
    const int chance = below(10);
    if (chance < (p_adds ? 7 : 4)) {
        addThroughScene();
        return QStringLiteral("add");
    }
    if (chance < 8) {
        pasteCopy();
        return QStringLiteral("paste");
    }
    if (chance == 8) {
        deleteByKey();
        return QStringLiteral("delete");
    }
    throwAway();
    return QStringLiteral("throw away");
}

QStringList RandomProgram::history(int p_steps, bool p_adds)
{
    QUndoStack& stack = m_view.undoStack();
    QVector<State> states{state()};
    QStringList done;
    for (int step = 0; step < p_steps; ++step) {
        const int count = stack.count();
        const QString what = doSomething(p_adds);
        const QStringList broken = brokenInvariants(m_view) + brokenCodePane();
        if (!broken.isEmpty()) {
            return broken + QStringList{QStringLiteral("after ") + what};
        }
        if (stack.count() > count) {
            states.append(state());
            done << what;
            ++m_tally[QStringLiteral("undone: ") + what];
        } else if (stack.count() < count) {
            return {what + QStringLiteral(" takes from the history")};
        }
    }
    const int last = states.size() - 1;
    if (stack.count() != last) {
        return {QStringLiteral("the history has %1 entries, not %2").arg(stack.count()).arg(last)};
    }
    const auto go = [&](int p_key, int p_to, const QString& p_what) {
        key(p_key, Qt::ControlModifier);
        const QStringList broken = unlike(states.at(p_to), p_what) + brokenCodePane();
        return broken.isEmpty() ? broken : broken + done;
    };
    QStringList broken;
    for (int round = 0; round < 2 && broken.isEmpty(); ++round) {
        for (int at = last; at > 0 && broken.isEmpty(); --at) {
            broken =
                go(Qt::Key_Z, at - 1,
                   QStringLiteral("After the undo of entry %1, %2,").arg(at).arg(done.at(at - 1)));
        }
        for (int at = 1; at <= last && broken.isEmpty(); ++at) {
            broken =
                go(Qt::Key_Y, at,
                   QStringLiteral("After the redo of entry %1, %2,").arg(at).arg(done.at(at - 1)));
        }
    }
    if (!broken.isEmpty()) {
        return broken;
    }
    while (stack.canUndo()) {
        key(Qt::Key_Z, Qt::ControlModifier);
    }
    return unlike(states.first(), QStringLiteral("At the start"));
}

QStringList RandomProgram::brokenHistory()
{
    m_view.undoStack().clear();
    return history(3 + below(6), false);
}

QStringList RandomProgram::brokenHistoryFromNothing()
{
    documentModified = false;
    m_window.OnNewFile();
    const QStringList nothing = documentOutline(m_view, Telling::Parameters);
    if (nothing != QStringList{"0"}) {
        return {QStringLiteral("a new document holds\n") + nothing.join(QLatin1Char('\n'))};
    }
    return history(8 + below(10), true);
}
