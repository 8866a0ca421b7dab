#pragma once

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>

/** The scene of the canvas: the blocks, and the pale logo behind them. */
class tzprogramscene : public QGraphicsScene
{
    Q_OBJECT

public:
    explicit tzprogramscene(QObject* p_parent = nullptr);

    QGraphicsPixmapItem& logo() { return m_logo; }
    /** Deletes every block of the program but those to keep. Links to them must be gone. */
    void clearItems(const QList<const QGraphicsItem*>& p_kept);

signals:
    /** Meant: never raised; a signal of the design. */
    void dragSignal(int n);
    /**
     * A block of a type was dropped on the scene itself. Meant: the view takes drops before they
     * reach the scene, so this isn't raised while it does; a scene without this view can be dropped
     * on.
     */
    void addModuleSignal(int x, int y, int id);

protected:
    // Tab and Backtab come from outside to the first or last button in sight, walk them, and leave.
    bool event(QEvent* p_event) override;
    void focusInEvent(QFocusEvent* p_event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* p_event) override;

private:
    /** Its pixmap, or, where the view scales up, the fine picture. */
    class Logo final : public QGraphicsPixmapItem
    {
    public:
        void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
                   QWidget* p_widget) override;
    };

    Logo m_logo;
};
