#include "canvas/clipboard.h"
#include "canvas/pastecommand.h"
#include "canvas/tzprogramscene.h"
#include "canvas/tzprogramview.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectdocument.h"
#include "project/projectfile.h"

#include <QGuiApplication>

namespace
{
const char s_format[] = "korvane/tiler/modules";
/** The place of a paste that has none; it ends up as a scene position as it is. */
const int s_noPlace = -99999;
/** How far from its source a copy stands that is pasted at once. */
const int s_copyOffset = 160;
} // namespace

bool TzProgramView::hasClipboardBlocks() const
{
    return ClipBoard::hasFormat(QLatin1String(s_format));
}

void TzProgramView::OnCopy()
{
    finishDrag();
    // There is one main block: it isn't taken along.
    if (m_current && m_current != m_mainModule) {
        if (m_copied) {
            m_copied->setSelectTree(false);
        }
        m_copied = m_current;
    }
    m_ownClipboardChange = true;
    const StableAttributeOrder order;
    QDomDocument document(QStringLiteral("vantrel"));
    QDomElement root = document.createElement(QStringLiteral("vantrel"));
    document.appendChild(root);
    QDomElement baseNode = document.createElement(QStringLiteral("basenode"));
    root.appendChild(baseNode);
    writeChain(baseNode, document, m_current == m_mainModule ? nullptr : m_current.data(),
               &supermodule::saveCopyXml);
    ClipBoard::setData(QLatin1String(s_format), document.toString(1));
    if (m_copied) {
        m_copied->setSelectTree(true);
    }
    m_current.clear();
}

void TzProgramView::OnPaste()
{
    // From the widget's own place, not the cursor's: that is meant.
    const QPoint at = mapToScene(mapFromGlobal(pos())).toPoint();
    pasteAt(at.x(), at.y());
}

void TzProgramView::OnCopyAndPaste()
{
    OnCopy();
    int x = s_noPlace;
    int y = s_noPlace;
    if (m_copied) {
        x = static_cast<int>(m_copied->scenePos().x() + s_copyOffset);
        y = static_cast<int>(m_copied->scenePos().y() + s_copyOffset);
    }
    pasteAt(x, y);
}

void TzProgramView::pasteAt(int x, int y)
{
    QString text = ClipBoard::data(QLatin1String(s_format));
    // As with a file: what is larger than any project isn't read, nor kept in the undo history.
    if (text.size() > MaximalProjectSize) {
        text.clear();
    }
    m_undoStack.push(new moduleUndoCommand::pasteCommand(this, text, x, y));
}

void TzProgramView::OnUndoCopy()
{
    if (m_copied) {
        m_copied->setSelectTree(false);
    }
    m_copied.clear();
    QGuiApplication::clipboard()->setText(QString());
}

void TzProgramView::OnClipboardChanged(QClipboard::Mode p_mode)
{
    // Under X a text that is selected anywhere is a clipboard of its own; it takes nothing away.
    if (p_mode != QClipboard::Clipboard) {
        return;
    }
    // Someone else took the clipboard.
    if (!m_ownClipboardChange && m_copied) {
        m_copied->setSelectTree(false);
    }
    m_ownClipboardChange = false;
}
