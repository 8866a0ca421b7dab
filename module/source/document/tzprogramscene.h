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
    /** Never raised. */
    void dragSignal(int n);
    /**
     * A block of a type was dropped on the scene itself. The view takes drops before they come
     * here, so that this isn't raised while it does.
     */
    void addModuleSignal(int x, int y, int id);

protected:
    void dropEvent(QGraphicsSceneDragDropEvent* p_event) override;

private:
    QGraphicsPixmapItem m_logo;
};
