#include "canvas/blockclipboard.h"

#include "document/clipboard.h"
#include "document/document.h"
#include "modules/mainmodule.h"

#include <QGuiApplication>

namespace
{
const char s_format[] = "korvane/tiler/modules";
/**
 * Meant: the place of a paste that has none, used as a scene position as it is; the design says so.
 */
const int s_noPlace = -99999;
/** How far from its source a copy stands that is pasted at once. */
const int s_copyOffset = 160;
} // namespace

BlockClipboard::BlockClipboard(Document& p_document, QObject* p_parent)
    : QObject(p_parent), m_document(p_document)
{
    connect(QGuiApplication::clipboard(), &QClipboard::changed, this,
            &BlockClipboard::OnClipboardChanged);
}

bool BlockClipboard::hasBlocks() { return ClipBoard::hasFormat(QLatin1String(s_format)); }

void BlockClipboard::copy(supermodule* p_module)
{
    supermodule* taken = p_module == m_document.mainBlock() ? nullptr : p_module;
    if (taken) {
        if (m_copied) {
            m_copied->setSelectTree(false);
        }
        m_copied = taken;
    }
    m_ownClipboardChange = true;
    ClipBoard::setData(QLatin1String(s_format), Document::clipboardText(taken));
    m_data = QGuiApplication::clipboard()->mimeData();
    showFrame();
}

void BlockClipboard::undoCopy()
{
    if (m_copied) {
        m_copied->setSelectTree(false);
    }
    m_copied.clear();
    emptyClipboard();
}

void BlockClipboard::emptyClipboard()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    // Not ownsClipboard(), which is also true of a text out of the code pane: the clipboard gives
    // back the object that it was given for as long as it is the one that stands there.
    if (m_data && clipboard->mimeData() == m_data) {
        clipboard->setText(QString());
    }
}

void BlockClipboard::paste(const QPoint& p_at)
{
    m_document.paste(ClipBoard::data(QLatin1String(s_format)), p_at.x(), p_at.y());
}

void BlockClipboard::pasteBesideSource()
{
    QPoint at(s_noPlace, s_noPlace);
    if (m_copied) {
        at = QPoint(static_cast<int>(m_copied->scenePos().x() + s_copyOffset),
                    static_cast<int>(m_copied->scenePos().y() + s_copyOffset));
    }
    paste(at);
}

void BlockClipboard::showFrame()
{
    if (m_copied) {
        m_copied->setSelectTree(true);
    }
}

void BlockClipboard::removing(const supermodule* p_module)
{
    if (m_copied && p_module == m_copied) {
        m_copied.clear();
        emptyClipboard();
    }
}

void BlockClipboard::OnClipboardChanged(QClipboard::Mode p_mode)
{
    // Under X a text that is selected anywhere is a clipboard of its own; it takes nothing away.
    if (p_mode != QClipboard::Clipboard) {
        return;
    }
    // Another program, or another part of this one, owns the clipboard now.
    if (!m_ownClipboardChange && m_copied) {
        m_copied->setSelectTree(false);
    }
    m_ownClipboardChange = false;
}
