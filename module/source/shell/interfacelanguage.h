#pragma once

class QTranslator;

/**
 * Gives the application the font and the translation of a LanguageCode: English has 8 points and
 * the English texts, every other one 10 points and the Chinese ones.
 * A translation that can't be loaded leaves the source texts, which are Chinese. p_translator is
 * installed and must outlive all widgets.
 */
void setUpInterface(int p_languageCode, QTranslator& p_translator);
