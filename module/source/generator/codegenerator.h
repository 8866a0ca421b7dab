#pragma once

#include <QString>

class CodeMap;

/**
 * Language codes of the generators. Meant: no control asks for Python; its text is for the code
 * pane alone.
 */
enum CodeLanguage : int { NoCode = -1, CCode = 1, PythonCode = 2 };

/**
 * The text of the program slot that is shown, for the code pane: its root's chain and, in C, all
 * tasks. Any language but those of CodeLanguage gives an empty text. Leaves variableUse
 * describing this text.
 */
QString generateVisibleCode(int p_language);
/** The same, and tells which block has given what of it. No block has given any Python text. */
QString generateVisibleCode(int p_language, CodeMap& p_map);

/** The text of the whole project, as it is built. */
QString generateProjectCode(int p_language);
