#pragma once

#include <QSyntaxHighlighter>

/** Colours the generated C and Python texts: words of the language, calls, numbers, texts. */
class CodeHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    /** The document owns the highlighter. */
    explicit CodeHighlighter(QTextDocument* p_document);

protected:
    void highlightBlock(const QString& p_line) override;
};
