#pragma once

#include <QWidget>

/** Base of what stands in the palette's scroll area. */
class PanelBase : public QWidget
{
    Q_OBJECT

public:
    explicit PanelBase(QWidget* p_parent = nullptr);

    /**
     * Lays the panel out for a height in pixels and sizes it: the height of the scroll area less
     * that of its horizontal bar.
     */
    virtual void setPanelHeight(int p_height) = 0;

signals:
    /** Asks for a repaint of the canvas. */
    void updateViewSignal();

protected:
    /** The part of a panel's height that its content takes. */
    double m_scale = 1.0;

private:
    Q_DISABLE_COPY(PanelBase)
};
