#include "modules/catalogue/sensormodule.h"

namespace
{
const ButtonLook s_conditionChooser = {":/control_left_nol_60x40.png",
                                       ":/control_left_pre_60x40.png", true, false};
const ButtonLook s_portChooser = {":/control_right_nol_60x40.png", ":/control_right_pre_60x40.png",
                                  false, true};
const int s_chooseTrue = ConditionOffset;
const int s_chooseFalse = ConditionOffset + 1;
} // namespace

QString sensorModule::whileText() const
{
    const QString comparison = QString::fromLatin1(bInfread ? look().whenTrue : look().whenFalse);
    return QString::fromLatin1(look().whileText).arg(QString::number(sensorPort()), comparison);
}

const char* sensorModule::conditionPicture() const
{
    return chooserOf(look().condition).entries.texts.begin()[bInfread ? 0 : 1];
}

void sensorModule::loadXml(const QDomElement& p_element)
{
    parameterModule::loadXml(p_element);
    port = numberIn(p_element, "port");
    bInfread = numberIn(p_element, "bInfread") == 1;
    showOnButton(1, QString::number(sensorPort()));
    update();
}

void sensorModule::writeAttributes(QDomElement& p_element) const
{
    p_element.setAttribute(QStringLiteral("port"), sensorPort());
    p_element.setAttribute(QStringLiteral("bInfread"), bInfread ? 1 : 0);
}

QDomElement sensorModule::paramsElement() const { return portAlone(sensorPort()); }

void sensorModule::setParamIndex(int p_index)
{
    if (p_index == s_chooseTrue || p_index == s_chooseFalse) {
        bInfread = p_index == s_chooseTrue;
    } else {
        port = p_index + chooserOf(SensorPortMode).entries.first;
        showOnButton(1, QString::number(sensorPort()));
    }
    parameterChanged();
}

void sensorModule::addSensorButtons(int p_x)
{
    addChooser(s_conditionChooser, QRect(p_x, 100, 60, 40),
               [this] { OnSetParamByPos(look().condition, buttonCentre(0)); });
    addChooser(
        s_portChooser, QRect(p_x + 60, 100, 60, 40),
        [this] { OnSetParamByPos(SensorPortMode, buttonCentre(1)); },
        QString::number(sensorPort()));
}

QString waitUntilModule::cCode() const { return whileText() + QStringLiteral("wait(0.1);\n}\n"); }

void waitUntilModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawOn(p_painter, ":/control_icon_nol_140x120.png", look().overlay);
    drawPicture(p_painter, conditionPicture(), 86, 10);
}
