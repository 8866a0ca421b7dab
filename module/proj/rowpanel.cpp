#include "proj/rowpanel.h"

#include "proj/controls/hoverlight.h"

#include <QPushButton>

RowPanel::RowPanel(QWidget* p_parent) : PanelBase(p_parent) {}

QPushButton* RowPanel::addButton(const QString& p_style)
{
    auto* button = new QPushButton(this);
    // No keyboard focus: the block's field keeps it, so that both keyboards can be used in turn.
    button->setFocusPolicy(Qt::NoFocus);
    button->setAttribute(Qt::WA_DeleteOnClose);
    button->setStyleSheet(p_style);
    new HoverLight(button);
    button->show();
    m_buttons.append(button);
    return button;
}

void RowPanel::layOutRow(const QSize& p_button, int p_height)
{
    if (m_buttons.isEmpty()) {
        return;
    }
    const int gap = 20;
    const int y = static_cast<int>((p_height - p_button.height()) * 0.5);
    int x = 6;
    for (QPushButton* button : qAsConst(m_buttons)) {
        button->setGeometry(QRect(QPoint(x, y), p_button));
        x += p_button.width() + gap;
    }
    const QRect last = m_buttons.last()->geometry();
    resize(last.x() + last.width() + 21, p_height);
}

int RowPanel::squareSide(int p_height) const
{
    const int limit = 100;
    return static_cast<int>(qMin(m_scale * p_height, static_cast<double>(limit)));
}

void RowPanel::reportSender()
{
    const int index = m_buttons.indexOf(qobject_cast<QPushButton*>(sender()));
    emit SelectNumberSignal(index);
    emit updateViewSignal();
}
