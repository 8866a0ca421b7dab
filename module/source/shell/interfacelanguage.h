#pragma once

class QTranslator;

/**
 * Gives the application the font and the translation of a LanguageCode: English has 8 points and
 * the English texts, every other one 10 points and the Chinese ones. Qt's own dialogs speak the
 * same. A translation that can't be loaded leaves the source texts: Chinese, and English in Qt's
 * dialogs. Both translators are installed and must outlive all widgets.
 */
void setUpInterface(int p_languageCode, QTranslator& p_translator, QTranslator& p_ofQt);
