#pragma once

#include <QLocale>

/** The codes of the interface's languages. */
enum LanguageCode : int { SimplifiedChinese = 1, English = 2, TraditionalChinese = 3 };

/**
 * The LanguageCode for a locale: TraditionalChinese for Chinese in Taiwan, Hong Kong, Singapore or
 * Macau, SimplifiedChinese for any other, and English for every other language.
 */
int languageCodeOf(const QLocale& p_locale);

/** languageCodeOf() the system's locale. */
int systemLanguageCode();
