#pragma once

class QString;
class QTextDocument;

/**
 * Brings a document from one plain text to another by replacing the part that differs alone, so
 * that its layout and what is in sight stay where nothing has changed. p_from is what it holds.
 */
void changeText(QTextDocument& p_document, const QString& p_from, const QString& p_to);
