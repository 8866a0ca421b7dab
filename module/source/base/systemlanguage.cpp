#include "base/systemlanguage.h"

int languageCodeOf(const QLocale& p_locale)
{
    if (p_locale.language() != QLocale::Chinese) {
        return English;
    }
    switch (p_locale.country()) {
    case QLocale::Taiwan:
    case QLocale::HongKong:
    case QLocale::Singapore:
    case QLocale::Macau:
        return TraditionalChinese;
    default:
        return SimplifiedChinese;
    }
}

int systemLanguageCode() { return languageCodeOf(QLocale::system()); }
