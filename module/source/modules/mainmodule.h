#pragma once

#include "modules/supermodule.h"

/**
 * Root block of the main program. The view makes the one of the document and keeps it for as
 * long as it lives; it can be moved but neither linked, copied nor deleted.
 */
class mainModule : public supermodule
{
    Q_OBJECT

public:
    using supermodule::supermodule;

    QRectF boundingRect() const override { return QRectF(0, 0, 140, 120); }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;
    /** The head of user_main, with the four speed variables. */
    QString cCode() const override;
    /** Always null: there is one main block. */
    supermodule* clone() const override { return nullptr; }
};
