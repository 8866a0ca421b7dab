#include "shell/codepane.h"

#include "canvas/blockmark.h"
#include "canvas/moduleat.h"
#include "canvas/tzprogramview.h"
#include "generator/codegenerator.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "proj/controls/textchange.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBrowser>

namespace
{
/** The frame colour of the program, so pale that every colour of the text is read on it. */
const QColor s_light(0xdc, 0xf4, 0xf8);
} // namespace

CodePane::CodePane(QTextBrowser& p_browser, TzProgramView& p_view)
    : m_browser(p_browser), m_view(p_view), m_mark(new BlockMark(p_view))
{
    m_browser.viewport()->installEventFilter(this);
    m_view.viewport()->installEventFilter(this);
    // Blocks pass below a mouse that rests.
    for (const QScrollBar* bar : {m_view.horizontalScrollBar(), m_view.verticalScrollBar()}) {
        connect(bar, &QScrollBar::valueChanged, this, &CodePane::light);
    }
}

void CodePane::showCode(int p_language)
{
    const QString text = generateVisibleCode(p_language, m_map);
    changeText(*m_browser.document(), m_text, text);
    m_text = text;
    m_mark->hide();
    // The block may be another one, and its text elsewhere.
    m_lit.reset();
    light();
}

const supermodule* CodePane::hovered() const
{
    if (!m_isOver || !m_browser.isVisible()) {
        return nullptr;
    }
    tzprogramscene& scene = m_view.document().scene();
    return pressTarget(m_view, m_view.mapToScene(m_mouse), scene.logo()).module;
}

void CodePane::light()
{
    const supermodule* module = hovered();
    const int key = module ? module->registryKey() : CodeMap::NoKey;
    if (key == m_lit) {
        return;
    }
    m_lit = key;
    const CodeMap::Part part = m_map.partOf(key);
    QList<QTextEdit::ExtraSelection> lit;
    if (!part.isEmpty()) {
        QTextEdit::ExtraSelection selection;
        selection.format.setBackground(s_light);
        selection.cursor = QTextCursor(m_browser.document());
        selection.cursor.setPosition(part.from);
        selection.cursor.setPosition(part.to, QTextCursor::KeepAnchor);
        lit.append(selection);
    }
    m_browser.setExtraSelections(lit);
}

void CodePane::pointAtBlockOf(const QPoint& p_at)
{
    const int key = m_map.keyAt(m_browser.cursorForPosition(p_at).position());
    const supermodule* module = key == 0 ? m_view.mainBlock() : moduleMap.value(key);
    if (module && module->isVisible()) {
        m_mark->pointAt(*module);
    } else {
        m_mark->hide();
    }
}

bool CodePane::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_watched == m_browser.viewport()) {
        if (p_event->type() == QEvent::MouseButtonPress) {
            const auto& press = static_cast<const QMouseEvent&>(*p_event);
            if (press.button() == Qt::LeftButton) {
                pointAtBlockOf(press.pos());
            }
        }
        return false;
    }
    if (p_event->type() == QEvent::MouseMove) {
        const auto& move = static_cast<const QMouseEvent&>(*p_event);
        m_mouse = move.pos();
        m_isOver = true;
        // A block that is dragged stays lit.
        if (move.buttons() == Qt::NoButton) {
            light();
        }
    } else if (p_event->type() == QEvent::Leave) {
        m_isOver = false;
        light();
    }
    return false;
}
