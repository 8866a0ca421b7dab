#pragma once

#include "modules/catalogue/parametermodule.h"

/** Sets the common speed of all motors: slow, middle or fast. */
class speedmodule final : public choiceModule
{
public:
    using choiceModule::choiceModule;

    QString cCode() const override;
    supermodule* clone() const override { return new speedmodule(*this); }
    void setParamIndex(int p_index) override { choose(p_index); }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    void createButtons() override;
};
