#pragma once

#include <QByteArray>

/**
 * The check tag of a document's text: the bytes added up as signed 8-bit values into 32 bits,
 * wrapping, plus 1, all bits inverted. An empty text gives 0xfffffffe.
 */
quint32 checkTag(const QByteArray& p_text);
