#pragma once

#include "modules/catalogue/concretemodule.h"
#include "modules/catalogue/parametermodule.h"

/** What a drive block differs in. */
struct DriveLook {
    const char* overlay;  /**< resource path of the pictogram */
    const char* fragment; /**< C text */
};

/** A block that sets the motors at once and has no parameter. */
class driveModule : public parameterModule
{
public:
    using Look = DriveLook;
    using parameterModule::parameterModule;

    QString cCode() const override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    virtual const Look& look() const = 0;
};

// Meant: the odd line feeds of the texts, the signs, and the four motors of the stop. Generated
// text stays byte for byte the same.

class forwardModule final : public concreteModule<forwardModule, driveModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/move_forward_icon.png",
                                    "set_motor(1, speed1);set_motor(2, -speed2);"};
};

class backforwardModule final : public concreteModule<backforwardModule, driveModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/move_backforward.png",
                                    "\nset_motor(1, -speed1);\nset_motor(2, speed2);"};
};

class turnleftModule final : public concreteModule<turnleftModule, driveModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/turn_left_icon.png",
                                    "set_motor(1, -speed1);set_motor(2, -speed2);"};
};

class turnrightModule final : public concreteModule<turnrightModule, driveModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/turn_right_icon.png",
                                    "set_motor(1, speed1);set_motor(2, speed2);"};
};

class stopMovingModule final : public concreteModule<stopMovingModule, driveModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {":/stop_moving_icon.png",
                                    "set_motor(1,0);set_motor(2,0);set_motor(3,0);set_motor(4,0);"};
};
