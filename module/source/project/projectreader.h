#pragma once

#include <QByteArray>

class QDomDocument;
class QString;

/** The deepest nesting of elements that a project may have. */
constexpr int MaximalProjectDepth = 1000;

/**
 * Parses a project's XML. False, with the parser's message in the debug log, if it isn't well
 * formed, or nested deeper than MaximalProjectDepth, for Qt's document class walks its elements
 * recursively and would overflow the stack, or if it declares entities and uses so many that they
 * could fill the memory.
 */
bool parseProject(const QByteArray& p_text, QDomDocument& p_document);

/** The same for a text that has been read already: an encoding that it names counts no more. */
bool parseProject(const QString& p_text, QDomDocument& p_document);
