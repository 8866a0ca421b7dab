#pragma once

#include <QObject>
#include <QPixmap>

class QColor;
class QWidget;

/**
 * Draws a widget 8% lighter while the mouse is over it, a white one as much bluer, and as it is
 * while it is pressed or disabled. What the widget paints and its style sheet stay as they are. The
 * widget owns the light.
 */
class HoverLight : public QObject
{
    Q_OBJECT

public:
    explicit HoverLight(QWidget* p_widget);

protected:
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    Q_DISABLE_COPY(HoverLight)

    QWidget* m_widget;
};

/** A picture 10% darker, for what is pressed. */
QPixmap pressedPicture(const QPixmap& p_picture);
