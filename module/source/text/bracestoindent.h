#pragma once

class QString;

/**
 * Lays out generated text in place: drops empty lines and indents each line by six blanks for
 * every brace that is open. A brace counts once a line, however many the line holds, and string
 * literals aren't known. Each line ends in one line feed.
 */
void bracesToIndent(QString& p_text);
