#pragma once

#include <QMenu>

class TzProgramView;

/** The menu of a right press on the canvas. */
class CanvasMenu : public QMenu
{
public:
    /** Its entries run the view's slots. The view must outlive the menu. */
    explicit CanvasMenu(TzProgramView& p_view);

    /** Shows the menu, and offers what can be done with a block under the press or with none. */
    void open(const QPoint& p_globalPos, bool p_onBlock);

private:
    QAction* m_actCopy;
    QAction* m_actPaste;
    QAction* m_actCopyAndPaste;
    QAction* m_actUndoCopy;
    QAction* m_actDelete;
};
