#pragma once

#include "modules/catalogue/concretemodule.h"
#include "modules/catalogue/parametermodule.h"

/** What a single-motor block differs in. */
struct MotorLook {
    const char* overlay;
    bool timed;           /**< has a time, a clock mark and a number field */
    const char* fragment; /**< C text: %1 the port's number, %2 the seconds */
};

/** A block for one motor port, "A" to "D". */
class motorModule : public parameterModule
{
public:
    using Look = MotorLook;
    using parameterModule::parameterModule;

    QString cCode() const override;
    void loadXml(const QDomElement& p_element) override;
    void setParamIndex(int p_index) override;
    void setNumberKey(int p_key) override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    virtual const Look& look() const = 0;
    void writeAttributes(QDomElement& p_element) const override;
    void createButtons() override;
    void takeNumber(const QString& p_text) override { time = p_text.toFloat(); }
    void refresh();

    static constexpr int s_defaultPort = 2;
    /** Port index, 0 for "A"; not range-checked on load. */
    int n = s_defaultPort;

private:
    int portButton() const { return look().timed ? 1 : 0; }

    /** Seconds of a timed block. */
    float time = 1.0f;
};

// Meant: a turn leaves its sign in the port's speed, where later statements find it. Generated text
// stays byte for byte the same.

class motorClockwiseModule final : public concreteModule<motorClockwiseModule, motorModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/single_motor_clockwise_icon.png", false,
                                    "speed%1 = -abs(speed%1);set_motor(%1, speed%1);"};
};

class motorAntiClockwiseModule final : public concreteModule<motorAntiClockwiseModule, motorModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/single_motor_anti_clockwise_icon.png", false,
                                    "speed%1 = abs(speed%1);set_motor(%1, speed%1);"};
};

class motorClockwiseTimeModule final : public concreteModule<motorClockwiseTimeModule, motorModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {
        ":/single_motor_clockwise_icon.png", true,
        "speed%1 = -abs(speed%1);\nset_motor(%1, speed%1);\nwait(%2);\nset_motor(%1, 0);\n"};
};

class motorAntiClockwiseTimeModule final
    : public concreteModule<motorAntiClockwiseTimeModule, motorModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {
        ":/single_motor_anti_clockwise_icon.png", true,
        "speed%1 = abs(speed%1);\nset_motor(%1, speed%1);\nwait(%2);\nset_motor(%1, 0);\n"};
};

class singleMotorStop final : public concreteModule<singleMotorStop, motorModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/single_motor_stop_icon.png", false, "set_motor(%1, 0);\n"};

    /** Meant: the copy stands on port "C" whatever its source had, as the design says. */
    supermodule* clone() const override;
    /** Meant: null, though the block has a port; the design has no parameter here. */
    QDomElement paramsElement() const override { return QDomElement(); }
};
