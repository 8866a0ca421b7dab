#include "modules/catalogue/expressionmodules.h"

#include "proj/controls/picturecache.h"

namespace
{
const char s_body[] = ":/expression/expression_icon_nol_140x120.png";
const ButtonLook s_symbolChooser = {":/expression/expression_down_nol_60x40.png",
                                    ":/expression/expression_down_pre_60x40.png", true, false};
const ButtonLook s_portChooser = {":/expression/expression_down_r_nol_60x40.png",
                                  ":/expression/expression_down_r_pre_60x40.png", false, true};
const ButtonLook s_faceChooser = {":/expression/expression_down_nol_80x40.png",
                                  ":/expression/expression_down_pre_80x40.png", true, false};
const ButtonLook s_closePort = {":/expression/expression_down_nol_80x40.png",
                                ":/expression/expression_down_pre_80x40.png", false, true};
const QRect s_oneButton(20, 100, 80, 40);

const char s_dark[] = "disp_custom(%1,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});";
} // namespace

namespace symbolNumbers
{
int sign(int p_symbol)
{
    static const int s_numbers[] = {45, 1, 2, 3, 4, 0, 46, 47, 48, 49, 50, 51, 52};
    return 0 <= p_symbol && p_symbol < 13 ? s_numbers[p_symbol] : 0;
}

int arithmetic(int p_symbol)
{
    static const int s_numbers[] = {5, 6, 7, 8, 4};
    return 0 <= p_symbol && p_symbol < 5 ? s_numbers[p_symbol] : 0;
}

int digit(int p_symbol) { return static_cast<int>(static_cast<unsigned>(p_symbol) + 9U); }

int letter(int p_symbol) { return static_cast<int>(static_cast<unsigned>(p_symbol) + 19U); }
} // namespace symbolNumbers

void displayModule::loadXml(const QDomElement& p_element)
{
    parameterModule::loadXml(p_element);
    port = numberIn(p_element, "port");
    showOnButton(m_portButton, QString::number(port));
}

void displayModule::writeAttributes(QDomElement& p_element) const
{
    p_element.setAttribute(QStringLiteral("port"), port);
}

void displayModule::setParamIndex(int p_index)
{
    port = p_index + chooserOf(DisplayPortMode).entries.first;
    showOnButton(m_portButton, QString::number(port));
    parameterChanged();
}

void displayModule::addPortButton(int p_index, const ButtonLook& p_look, const QRect& p_geometry)
{
    m_portButton = p_index;
    addChooser(
        p_look, p_geometry,
        [this] { OnSetParamByPos(DisplayPortMode, buttonCentre(m_portButton)); },
        QString::number(port));
}

QString symbolModule::cCode() const
{
    return QString::fromLatin1(look().fragment)
        .arg(QString::number(displayPort()), QString::number(look().number(symbol)));
}

void symbolModule::loadXml(const QDomElement& p_element)
{
    displayModule::loadXml(p_element);
    symbol = numberIn(p_element, "n");
    update();
}

void symbolModule::writeAttributes(QDomElement& p_element) const
{
    displayModule::writeAttributes(p_element);
    p_element.setAttribute(QStringLiteral("n"), symbol);
}

void symbolModule::setNumberKey(int p_index)
{
    symbol = p_index;
    parameterChanged();
}

void symbolModule::createButtons()
{
    addChooser(s_symbolChooser, QRect(0, 100, 60, 40), [this] { OnSetExpression(look().symbols); });
    addPortButton(1, s_portChooser, QRect(60, 100, 60, 40));
}

void symbolModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawBody(p_painter, s_body);
    drawCentred(p_painter, picture(chooserOf(look().symbols).entry(symbol)));
}

QString expressionTwoModule::cCode() const { return QStringLiteral("disp_emoji(2,3,%1);").arg(n); }

void expressionTwoModule::createButtons()
{
    addChooser(s_faceChooser, s_oneButton, [this] { OnSetExpression(FaceSymbols); });
}

void expressionTwoModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawBody(p_painter, s_body);
    drawCentred(p_painter,
                picture(chooserOf(FaceSymbols).entry(static_cast<qint64>(n) - s_firstChoice)));
}

QString closeOneModule::cCode() const { return QString::fromLatin1(s_dark).arg(displayPort()); }

void closeOneModule::createButtons() { addPortButton(0, s_closePort, s_oneButton); }

void closeOneModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawOn(p_painter, s_body, ":/expression/close_one_icon.png");
}

QString closeAllModule::cCode() const
{
    // Meant: the row of blanks. Generated text stays byte for byte the same.
    const QString dark = QString::fromLatin1(s_dark);
    return dark.arg(2) + QString(12, QLatin1Char(' ')) + dark.arg(3);
}

void closeAllModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawOn(p_painter, s_body, ":/expression/close_icon.png");
}
