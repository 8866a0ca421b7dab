#include "modules/catalogue/steeringenginemodule.h"

#include "actions/model/servoangle.h"
#include "modules/catalogue/choosers.h"
#include "proj/controls/selectablebutton.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>

namespace
{
const uint32_t s_angleKeys = KeyboardDigits | KeyboardMinus | KeyboardDelete;
// No blanks between the rules of these two: that is meant.
const ButtonLook s_angleField = {":/single_time_nol_60x40.png", ":/single_time_pre_60x40.png",
                                 false, false, 0};
const ButtonLook s_servoChooser = {":/single_motor_nol_60x40.png", ":/single_motor_pre_60x40.png",
                                   true, false, 0};
const int s_limit = 150;
/** The parameter that the panel of servos is for. */
const int s_servoIdParam = 1;
const int s_firstServo = 1;
/** The speed that every servo call carries. */
const int s_servoSpeed = 716;
const QChar s_degree(0xb0);
} // namespace

QString steeringenginemodule::cCode() const
{
    return QStringLiteral("servo_ctrl(%1, %2, %3, 0);\n")
        .arg(QString::number(servoId), QString::number(s_servoSpeed),
             QString::number(angleToServoPosition(qint64(angle) * 100)));
}

void steeringenginemodule::loadXml(const QDomElement& p_element)
{
    supermodule::loadXml(p_element);
    servoId = numberIn(p_element, "servoId");
    angle = numberIn(p_element, "angle");
    refresh();
}

void steeringenginemodule::writeAttributes(QDomElement& p_element) const
{
    p_element.setAttribute(QStringLiteral("servoId"), servoId);
    p_element.setAttribute(QStringLiteral("angle"), angle);
}

void steeringenginemodule::refresh()
{
    showOnButton(0, QString::number(angle) + s_degree);
    update(boundingRect());
}

void steeringenginemodule::setParamIndex(int p_servoId)
{
    servoId = p_servoId;
    refresh();
    parameterChanged();
}

void steeringenginemodule::setPanelValue(int p_paramId, int p_value)
{
    if (p_paramId == s_servoIdParam) {
        setParamIndex(p_value + s_firstServo);
    }
}

void steeringenginemodule::setNumberKey(int p_key)
{
    SelectableButton* field = &numberField();
    if (!field->acceptsKey(p_key)) {
        return;
    }
    // The degree sign stays out of the way of the editing rules.
    const QString before = field->text();
    field->setText(before.chopped(qMin(1, before.size())));
    field->applyKey(p_key);
    const int value = field->text().toInt();
    if (value < -s_limit || value > s_limit) {
        field->setText(before);
        const QPoint at(60, -10);
        QApplication::postEvent(field, new QHelpEvent(QEvent::ToolTip, at, field->mapToGlobal(at)));
        return;
    }
    angle = value;
    if (!field->text().isEmpty()) {
        field->setText(field->text() + s_degree);
    }
    parameterChanged();
}

bool steeringenginemodule::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_event->type() == QEvent::KeyPress && p_watched == liveButton(0)) {
        setNumberKey(static_cast<QKeyEvent*>(p_event)->key());
        return true;
    }
    return parameterModule::eventFilter(p_watched, p_event);
}

void steeringenginemodule::createButtons()
{
    addNumberField(s_angleField, QRect(0, 100, 60, 40), s_angleKeys, QString(), "-150 ~ 150");
    addChooser(s_servoChooser, QRect(60, 100, 60, 40),
               [this] { onSetPanel(ServoIdsPanel, s_servoIdParam); });
    refresh();
}

void steeringenginemodule::buttonMade(int p_index, QPushButton& p_button)
{
    if (p_index == 0) {
        // Keys come through the event filter, so the field never takes one by itself.
        p_button.installEventFilter(this);
    }
}

void steeringenginemodule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawMotion(p_painter, ":/serve_icon.png");
    QFont font;
    font.setPixelSize(14);
    font.setWeight(QFont::Bold);
    p_painter->setFont(font);
    p_painter->setPen(Qt::white);
    p_painter->drawText(
        70, 20, chooserOf(ServoIdsPanel).entry(static_cast<qint64>(servoId) - s_firstServo));
}
