#include "canvas/canvasmenu.h"

#include "base/tilerlog.h"
#include "canvas/tzprogramview.h"
#include "proj/controls/stylesheets.h"

#include <QDebug>

CanvasMenu::CanvasMenu(TzProgramView& p_view)
    : m_actCopy(addAction(TzProgramView::tr("复制"), &p_view, &TzProgramView::OnCopy,
                          QKeySequence::Copy)),
      m_actPaste(addAction(TzProgramView::tr("黏贴"), &p_view, &TzProgramView::OnPaste,
                           QKeySequence::Paste)),
      m_actCopyAndPaste(
          addAction(TzProgramView::tr("复制并黏贴"), &p_view, &TzProgramView::OnCopyAndPaste)),
      m_actUndoCopy(addAction(TzProgramView::tr("取消复制"), &p_view, &TzProgramView::OnUndoCopy)),
      m_actDelete(addAction(TzProgramView::tr("删除"), &p_view, &TzProgramView::OnDelItem))
{
    setStyleSheet(menuStyleSheet());
}

void CanvasMenu::open(const QPoint& p_globalPos, bool p_onBlock)
{
    const bool canPaste = BlockClipboard::hasBlocks();
    qCDebug(tilerLog) << "canPaste " << canPaste;
    m_actCopy->setEnabled(p_onBlock);
    m_actCopyAndPaste->setEnabled(p_onBlock);
    m_actPaste->setEnabled(canPaste);
    m_actUndoCopy->setEnabled(canPaste);
    m_actDelete->setEnabled(p_onBlock);
    popup(p_globalPos);
}
