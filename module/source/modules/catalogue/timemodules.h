#pragma once

#include "modules/catalogue/concretemodule.h"
#include "modules/catalogue/parametermodule.h"

/** A time as it stands in C text: at most six digits, like "0.4" or "1e+06". */
QString secondsText(float p_seconds);

/**
 * What a field shows for a number as it stands in a file. Files hold the widened form of a float,
 * 0.40000000596046448 for 0.4: that is shown as the shortest text that gives the same float. Any
 * other text is p_other.
 */
QString storedText(const QString& p_stored, const QString& p_other);

/** What a block with a time differs in. */
struct TimeLook {
    const char* overlay;
    bool timeMark;        /**< draws the small clock */
    int buttonWidth;      /**< of the time button */
    const char* fragment; /**< C text, with %1 for the seconds */
};

/** A block whose one parameter is a time in seconds, typed on the number keyboard. */
class timeModule : public parameterModule
{
public:
    using Look = TimeLook;
    using parameterModule::parameterModule;

    QString cCode() const override;
    void loadXml(const QDomElement& p_element) override;
    void setNumberKey(int p_key) override { typeInField(p_key); }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    timeModule(const timeModule& p_other);
    virtual const Look& look() const = 0;
    void writeAttributes(QDomElement& p_element) const override;
    void createButtons() override;
    void takeNumber(const QString& p_text) override;

private:
    /** Seconds; 0 when the field is empty or holds no number. */
    float n = 1.0f;
    /** What the button shows; from a file it is the attribute by storedText(). */
    QString m_numberText = QStringLiteral("1");
};

class moveWaitModule final : public concreteModule<moveWaitModule, timeModule>
{
public:
    using concreteModule::concreteModule;
    // Meant: three units wider than the button of the timed drives, as the design says.
    static constexpr Look s_look = {":/move_wait.png", false, 83, "wait(%1);\n"};
};

// Meant: they stop the two wheels that they turned and no other motor. Generated text stays byte
// for byte the same.

class moveForwardTimeModule final : public concreteModule<moveForwardTimeModule, timeModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {
        ":/move_forward_icon.png", true, 80,
        "set_motor(1, speed1);\nset_motor(2, -speed2);\nwait(%1);\nset_motor(1, 0);\nset_motor(2, 0);\n"};
};

class moveBackwardTimeModule final : public concreteModule<moveBackwardTimeModule, timeModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {
        ":/move_backforward.png", true, 80,
        "set_motor(1, -speed1);\nset_motor(2, speed2);\nwait(%1);\nset_motor(1, 0);\nset_motor(2, 0);\n"};
};

class turnLeftTimeModule final : public concreteModule<turnLeftTimeModule, timeModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {
        ":/turn_left_icon.png", true, 80,
        "set_motor(1, -speed1);\nset_motor(2, -speed2);\nwait(%1);\nset_motor(1, 0);\nset_motor(2, 0);\n"};
};

class turnRightTimeModule final : public concreteModule<turnRightTimeModule, timeModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {
        ":/turn_right_icon.png", true, 80,
        "set_motor(1, speed1);\nset_motor(2, speed2);\nwait(%1);\nset_motor(1, 0);\nset_motor(2, 0);\n"};
};
