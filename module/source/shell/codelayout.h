#pragma once

#include <QAbstractTextDocumentLayout>

/**
 * The layout of a text whose lines are all of one height, in a font of one width, and are never
 * wrapped. Only what is asked for is laid out, and only what has changed is painted anew, so that
 * an edit takes hardly longer the longer the text is. Formats come from a highlighter.
 */
class CodeLayout : public QAbstractTextDocumentLayout
{
    Q_OBJECT

public:
    /** To be given to the document by setDocumentLayout(), which then owns it. */
    explicit CodeLayout(QTextDocument* p_document);

    void draw(QPainter* p_painter, const PaintContext& p_context) override;
    int hitTest(const QPointF& p_point, Qt::HitTestAccuracy p_accuracy) const override;
    int pageCount() const override { return 1; }
    QSizeF documentSize() const override { return m_size; }
    QRectF frameBoundingRect(QTextFrame* p_frame) const override;
    QRectF blockBoundingRect(const QTextBlock& p_block) const override;

protected:
    void documentChanged(int p_from, int p_removed, int p_added) override;

private:
    qreal top(int p_line) const;
    int lineAt(qreal p_y) const;

    QSizeF m_size;
    qreal m_lineHeight = 1;
    int m_lines = 0;
};
