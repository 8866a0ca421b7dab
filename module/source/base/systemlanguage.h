#pragma once

#include <QLocale>

/**
 * The interface's language code for a locale: 1 Simplified Chinese, 3 Traditional Chinese
 * (Chinese in Taiwan, Hong Kong, Singapore or Macau), 2 for every other language.
 */
int languageCodeOf(const QLocale& p_locale);

/** languageCodeOf() the system's locale. */
int systemLanguageCode();
