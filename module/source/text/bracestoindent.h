#pragma once

class QString;

/**
 * Lays out generated text in place: drops empty lines and indents each line by six blanks for every
 * brace that is open. Each line ends in one line feed. Meant: a brace counts once a line, however
 * many the line holds, and string literals aren't known, since generated text stays byte for byte
 * the same.
 */
void bracesToIndent(QString& p_text);
