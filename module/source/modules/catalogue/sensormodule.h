#pragma once

#include "modules/catalogue/choosers.h"
#include "modules/catalogue/concretemodule.h"
#include "modules/catalogue/parametermodule.h"

#include <optional>

/** A sensor of a conditional block: how it is asked, and how its two conditions look. */
struct SensorLook {
    const char* whileText; /**< C text: %1 the port, %2 the comparison */
    const char* whenTrue;  /**< %2 for the first condition */
    const char* whenFalse;
    const char* overlay;
    PopUpMode condition; /**< the chooser of the condition, and its two pictures */
    int defaultPort;
};

/** The two sensors, each with the picture of the block that asks it. */
namespace sensorLooks
{
constexpr SensorLook infrared(const char* p_overlay)
{
    return {"while(TZ_AI(%1) %2 500)\n{\n", ">", "<", p_overlay, InfraredMode, 4};
}
constexpr SensorLook touch(const char* p_overlay)
{
    return {"while(switch_state(%1) %2 0)\n{\n", "==", "!=", p_overlay, TouchMode, 5};
}
} // namespace sensorLooks

/**
 * A block that looks at a sensor: its port and its condition. Meant: the name of the condition's
 * attribute speaks of infrared, also where the sensor is for touch; stored files have it so.
 */
class sensorModule : public parameterModule
{
public:
    using Look = SensorLook;
    using parameterModule::parameterModule;

    void loadXml(const QDomElement& p_element) override;
    /** Meant: the port alone, without the condition; the design says so. */
    QDomElement paramsElement() const override;
    /** 5 and 6 choose the condition, any other number is the port's index. */
    void setParamIndex(int p_index) override;

    /** 1 to 5; not range-checked on load. */
    int sensorPort() const { return port.value_or(look().defaultPort); }

protected:
    /** Meant: the copy starts with the first condition, as the design says. */
    sensorModule(const sensorModule& p_other) : parameterModule(p_other), port(p_other.port) {}

    virtual const Look& look() const = 0;
    /** The head of the block's loop, up to and with its opening brace. */
    QString whileText() const;
    const char* conditionPicture() const;
    void writeAttributes(QDomElement& p_element) const override;
    /** Puts the two buttons side by side, the left one at an x. */
    void addSensorButtons(int p_x);

private:
    /** Empty until the block leaves its default. */
    std::optional<int> port;
    bool bInfread = true;
};

/** Waits until a sensor fulfils a condition. */
class waitUntilModule : public sensorModule
{
public:
    using sensorModule::sensorModule;

    QString cCode() const override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    void createButtons() override { addSensorButtons(0); }
};

class waituntiinfraredModule final : public concreteModule<waituntiinfraredModule, waitUntilModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = sensorLooks::infrared(":/waituntilinfread_icon.png");
};

class waituntiTouchModule final : public concreteModule<waituntiTouchModule, waitUntilModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = sensorLooks::touch(":/wait_until_touch_icon.png");
};
