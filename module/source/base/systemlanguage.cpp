#include "base/systemlanguage.h"

int languageCodeOf(const QLocale& p_locale)
{
    if (p_locale.language() != QLocale::Chinese) {
        return 2;
    }
    switch (p_locale.country()) {
    case QLocale::Taiwan:
    case QLocale::HongKong:
    case QLocale::Singapore:
    case QLocale::Macau:
        return 3;
    default:
        return 1;
    }
}

int systemLanguageCode() { return languageCodeOf(QLocale::system()); }
