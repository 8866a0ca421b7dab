#include "modules/catalogue/motormodules.h"

#include "modules/catalogue/choosers.h"
#include "modules/catalogue/timemodules.h"

namespace
{
// Meant: a background here where other blocks have a border image; the design says so.
const ButtonLook s_plainPort = {":/item_pulldown_nol_40x80.png",
                                ":/item_pulldown__pre_40x80.png",
                                false,
                                true,
                                29,
                                "background-image"};
const ButtonLook s_timeField = {":/single_time_nol_60x40.png", ":/single_time_pre_60x40.png", false,
                                false};
const ButtonLook s_timedPort = {":/single_motor_nol_60x40.png", ":/single_motor_pre_60x40.png",
                                false, true};
} // namespace

QString motorModule::cCode() const
{
    const QString fragment = QString::fromLatin1(look().fragment);
    // Wider than the field: a file may hold the largest number there is.
    const QString port = QString::number(static_cast<qint64>(n) + 1);
    // In one pass, and with no more arguments than there are placeholders.
    return look().timed ? fragment.arg(port, secondsText(time)) : fragment.arg(port);
}

void motorModule::loadXml(const QDomElement& p_element)
{
    supermodule::loadXml(p_element);
    n = numberIn(p_element, "n");
    if (look().timed) {
        time = p_element.attribute(QStringLiteral("time")).toFloat();
    }
    refresh();
}

void motorModule::writeAttributes(QDomElement& p_element) const
{
    p_element.setAttribute(QStringLiteral("n"), n);
    if (look().timed) {
        p_element.setAttribute(QStringLiteral("time"), static_cast<double>(time));
    }
}

void motorModule::setParamIndex(int p_index)
{
    n = p_index;
    refresh();
    parameterChanged();
}

void motorModule::setNumberKey(int p_key)
{
    if (look().timed) {
        typeInField(p_key);
    }
}

void motorModule::refresh()
{
    if (look().timed) {
        // Six digits, as the design says, unless they are another number than was typed.
        const QString six = QString::number(static_cast<double>(time), 'g', 6);
        const QString stored = QString::number(static_cast<double>(time), 'g', 17);
        showOnButton(0, six.toFloat() == time ? six : storedText(stored, six));
    }
    showOnButton(portButton(), chooserOf(MotorPortMode).entry(n));
}

void motorModule::createButtons()
{
    const auto choosePort = [this] { OnSetParam(MotorPortMode); };
    if (look().timed) {
        addNumberField(s_timeField, QRect(0, 100, 60, 40), TimeKeys, QString());
        addChooser(s_timedPort, QRect(60, 100, 60, 40), choosePort);
    } else {
        // Meant: as wide as the button of a wait, not as those of the drives; the design says so.
        addChooser(s_plainPort, QRect(20, 100, 83, 40), choosePort);
    }
    refresh();
}

void motorModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawMotion(p_painter, look().overlay, look().timed);
}

supermodule* singleMotorStop::clone() const
{
    auto* copy = new singleMotorStop(*this);
    copy->n = s_defaultPort;
    return copy;
}
