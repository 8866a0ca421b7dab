#pragma once

#include "modules/itemtype.h"

#include <QGraphicsItem>
#include <QObject>
#include <QPixmap>
#include <QPointer>
#include <QVector>

class QGraphicsScene;
class QPushButton;
class supermodule;
struct Chooser;

/**
 * The pop-up under a block from which a speed, a port or a condition is chosen. One instance
 * serves the whole program; the scene that it was made in owns it.
 */
class graphicsItem_Param : public QObject, public QGraphicsItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    enum { Type = PopUpItemType };

    graphicsItem_Param(QGraphicsScene* p_scene, QGraphicsItem* p_parent);

    /** The one pop-up, made in p_scene if there is none yet. */
    static graphicsItem_Param* shared(QGraphicsScene* p_scene);
    /** The one pop-up if it exists. */
    static graphicsItem_Param* existing();
    /** Hides the one pop-up if it exists. */
    static void dismiss();

    /** The block that gets the choice. */
    void setModule(supermodule* p_module);
    supermodule* module() const { return m_module; }
    /**
     * Builds the buttons of the block's chooser for a mode, 0 to 6, and shows the pop-up. Any other
     * mode shows it without buttons on the background that it had.
     */
    void setMode(int p_mode);
    const QVector<QPushButton*>& buttons() const { return m_buttons; }

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    /** Takes what falls beside the buttons: it must not reach the block beneath. */
    void mousePressEvent(QGraphicsSceneMouseEvent* p_event) override;

private slots:
    /** Hands the pressed button's index to the block. */
    void OnSelectParam();
    /** Hands over the index plus ConditionOffset, for a choice of a condition. */
    void OnSelectParam1();
    /** Meant: without effect; a slot of the design that no button is connected to. */
    void OnSelectParam2() {}

private:
    void build(const Chooser& p_chooser);
    void choose(int p_offset);

    QPointer<supermodule> m_module;
    QString m_backgroundImage;
    QPixmap m_background;
    QVector<QPushButton*> m_buttons;
};
