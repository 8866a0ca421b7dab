#pragma once

#include <QPushButton>
#include <QString>

class QStyleOptionButton;
class QStylePainter;

/**
 * A button on the canvas whose style sheet gives it a picture at rest and a pressed one. Where it
 * is painted larger than it is, it takes them and its icon from the fine pictures; style sheets
 * know only how fine the screen is.
 */
class PictureButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;

    /** The pictures of the style sheet, as resource paths; each fills the button. */
    void setPictures(const QString& p_normal, const QString& p_pressed);
    /** The picture of the state that the button is in. */
    QString shownPicture() const { return isDown() ? m_pressed : m_normal; }
    /** Shows a picture as icon; for a button without text. */
    void setIconPicture(const QString& p_path, const QSize& p_size);

protected:
    void paintEvent(QPaintEvent* p_event) override;
    /** Paints all of the button, as its style does. */
    void paintButton(QStylePainter& p_painter, const QStyleOptionButton& p_option);
    /** Paints text and icon, as its style does. */
    void paintLabel(QStylePainter& p_painter, const QStyleOptionButton& p_option);

private:
    QString m_normal;
    QString m_pressed;
    QString m_icon;
};
