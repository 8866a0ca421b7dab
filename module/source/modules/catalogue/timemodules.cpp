#include "modules/catalogue/timemodules.h"

#include <limits>

timeModule::timeModule(const timeModule& p_other)
    : parameterModule(p_other),
      n(p_other.n),
      m_numberText(QString::number(static_cast<double>(p_other.n), 'g', 6))
{
}

QString secondsText(float p_seconds)
{
    // Whole seconds are the common case, and the way over real numbers takes ten times as long.
    const int whole = 0 < p_seconds && p_seconds < 1e6F ? static_cast<int>(p_seconds) : 0;
    return whole > 0 && static_cast<float>(whole) == p_seconds
               ? QString::number(whole)
               : QString::number(static_cast<double>(p_seconds), 'g');
}

QString storedText(const QString& p_stored, const QString& p_other)
{
    const float value = p_stored.toFloat();
    const auto text = [value](int p_digits) {
        return QString::number(static_cast<double>(value), 'g', p_digits);
    };
    if (p_stored != text(std::numeric_limits<double>::max_digits10)) {
        return p_other;
    }
    for (int digits = 1; digits <= std::numeric_limits<float>::max_digits10; ++digits) {
        QString shorter = text(digits);
        // Fewer digits than a whole number has would bring an exponent, which no key can edit.
        if (shorter.toFloat() == value &&
            !(shorter.contains(QLatin1Char('e')) && !p_stored.contains(QLatin1Char('e')))) {
            return shorter;
        }
    }
    return p_stored;
}

QString timeModule::cCode() const
{
    return QString::fromLatin1(look().fragment).arg(secondsText(n));
}

void timeModule::loadXml(const QDomElement& p_element)
{
    supermodule::loadXml(p_element);
    const QString stored = p_element.attribute(QStringLiteral("n"));
    takeNumber(stored);
    m_numberText = storedText(stored, stored);
    showOnButton(0, m_numberText);
}

void timeModule::takeNumber(const QString& p_text)
{
    m_numberText = p_text;
    n = p_text.toFloat();
}

void timeModule::writeAttributes(QDomElement& p_element) const
{
    p_element.setAttribute(QStringLiteral("n"), static_cast<double>(n));
}

void timeModule::createButtons() { addOnlyNumberField(look().buttonWidth, TimeKeys, m_numberText); }

void timeModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawMotion(p_painter, look().overlay, look().timeMark);
}
