#include "proj/controls/picturebutton.h"

#include "proj/controls/picturecache.h"

#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

void PictureButton::setPictures(const QString& p_normal, const QString& p_pressed)
{
    m_normal = p_normal;
    m_pressed = p_pressed;
}

void PictureButton::setIconPicture(const QString& p_path, const QSize& p_size)
{
    m_icon = p_path;
    setIcon(QIcon(picture(p_path)));
    setIconSize(p_size);
}

void PictureButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    paintButton(painter, option);
}

void PictureButton::paintButton(QStylePainter& p_painter, const QStyleOptionButton& p_option)
{
    if (m_normal.isEmpty() || scaleOf(p_painter) <= 1) {
        p_painter.drawControl(QStyle::CE_PushButton, p_option);
        return;
    }
    p_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawPicture(&p_painter, p_option.rect, picture(shownPicture()));
    paintLabel(p_painter, p_option);
    if (p_option.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(p_option);
        focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &p_option, this);
        p_painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void PictureButton::paintLabel(QStylePainter& p_painter, const QStyleOptionButton& p_option)
{
    QStyleOptionButton option = p_option;
    if (!m_icon.isEmpty() && scaleOf(p_painter) > 1) {
        option.icon = QIcon();
        const QPixmap shown = picture(m_icon);
        drawPicture(&p_painter, iconRect(option.rect, iconSize(), shown), shown);
    }
    p_painter.drawControl(QStyle::CE_PushButtonLabel, option);
}
