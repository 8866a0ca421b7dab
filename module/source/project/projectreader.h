#pragma once

#include <QByteArray>

class QDomDocument;

/** The deepest nesting of elements that a project may have. */
constexpr int MaximalProjectDepth = 1000;

/**
 * Parses a project's XML. False, with the parser's message in the debug log, if it isn't well
 * formed or nested deeper than MaximalProjectDepth: Qt's document class walks its elements
 * recursively and would overflow the stack.
 */
bool parseProject(const QByteArray& p_text, QDomDocument& p_document);
