#pragma once

#include "modules/catalogue/concretemodule.h"
#include "modules/catalogue/loopshape.h"
#include "modules/catalogue/parametermodule.h"
#include "modules/catalogue/sensormodule.h"

/** Repeats its body without asking a sensor. */
class repeatModule : public loopShape<parameterModule>
{
public:
    using loopShape::loopShape;

    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    repeatModule(const repeatModule& p_other) = default;
};

/** Repeats its body a number of times. */
class forModule final : public repeatModule
{
public:
    using repeatModule::repeatModule;

    QString cCode() const override;
    void loadXml(const QDomElement& p_element) override;
    supermodule* clone() const override { return new forModule(*this); }
    void setNumberKey(int p_key) override { typeInField(p_key); }

protected:
    forModule(const forModule& p_other) = default;
    const LoopForm& form() const override;
    void writeAttributes(QDomElement& p_element) const override;
    void createButtons() override;
    void takeNumber(const QString& p_text) override { n = p_text.toInt(); }

private:
    /** Number of rounds; 0 when the field is empty; not range-checked on load. */
    int n = 10;
};

/** Repeats its body for ever; nothing can follow it. */
class foreverModule final : public repeatModule
{
public:
    using repeatModule::repeatModule;

    QString cCode() const override;
    supermodule* clone() const override { return new foreverModule(*this); }

protected:
    foreverModule(const foreverModule& p_other) = default;
    const LoopForm& form() const override;
};

/** Repeats its body until a sensor fulfils a condition. */
class loopUntilModule : public loopShape<sensorModule>
{
public:
    using loopShape::loopShape;

    QString cCode() const override;
    void createCollisions() override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;
    /** Draws all that is seen but the buttons; an empty loop reaches below its rectangle. */
    void drawBracket(QPainter* p_painter) const;

protected:
    const LoopForm& form() const override;
    void placeAtEnd(int p_right) override;
    void createButtons() override;
};

class loopuntiinfraredModule final : public concreteModule<loopuntiinfraredModule, loopUntilModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = sensorLooks::infrared(":/loopuntilinfread_icon.png");
};

class loopuntiTouchModule final : public concreteModule<loopuntiTouchModule, loopUntilModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = sensorLooks::touch(":/loop_until_touch_icon.png");
};
