#pragma once

#include "modules/catalogue/parametermodule.h"

/** Turns one servo to an angle. */
class steeringenginemodule final : public parameterModule
{
    Q_OBJECT

public:
    using parameterModule::parameterModule;

    QString cCode() const override;
    void loadXml(const QDomElement& p_element) override;
    supermodule* clone() const override { return new steeringenginemodule(*this); }
    /** Sets the servo's number itself, counted from 1. */
    void setParamIndex(int p_servoId) override;
    /** A key for the angle. A value outside -150 to 150 is refused, and a tool tip says why. */
    void setNumberKey(int p_key) override;
    /** Parameter 1 is the 0-based index of the servo; others do nothing. */
    void setPanelValue(int p_paramId, int p_value) override;
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

protected:
    steeringenginemodule(const steeringenginemodule& p_other) = default;
    void writeAttributes(QDomElement& p_element) const override;
    void createButtons() override;
    void buttonMade(int p_index, QPushButton& p_button) override;

private:
    void refresh();

    int servoId = 1;
    /** Degrees; whatever a file holds. */
    int angle = 0;
};
