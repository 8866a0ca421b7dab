#include "shell/codelayout.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextLayout>
#include <QtMath>

namespace
{
const qreal s_noLimit = 1e6;

/** A line of the text, laid out. */
QTextLayout& laidOut(const QTextBlock& p_block)
{
    QTextLayout& layout = *p_block.layout();
    if (layout.lineCount() == 0) {
        QTextOption option = p_block.document()->defaultTextOption();
        option.setWrapMode(QTextOption::NoWrap);
        layout.setTextOption(option);
        layout.setCacheEnabled(true);
        layout.beginLayout();
        layout.createLine().setLineWidth(s_noLimit);
        layout.endLayout();
    }
    return layout;
}

/** The part of a selection that lies in a line. */
QTextLayout::FormatRange partIn(const QTextBlock& p_block,
                                const QAbstractTextDocumentLayout::Selection& p_selection)
{
    QTextLayout::FormatRange range;
    range.start = qMax(0, p_selection.cursor.selectionStart() - p_block.position());
    range.length =
        qMin(p_block.length() - 1, p_selection.cursor.selectionEnd() - p_block.position()) -
        range.start;
    range.format = p_selection.format;
    return range;
}
} // namespace

CodeLayout::CodeLayout(QTextDocument* p_document) : QAbstractTextDocumentLayout(p_document) {}

qreal CodeLayout::top(int p_line) const
{
    return document()->documentMargin() + p_line * m_lineHeight;
}

int CodeLayout::lineAt(qreal p_y) const
{
    const qreal line = (p_y - document()->documentMargin()) / m_lineHeight;
    return static_cast<int>(qBound<qreal>(0, qFloor(line), document()->blockCount() - 1));
}

void CodeLayout::draw(QPainter* p_painter, const PaintContext& p_context)
{
    const QRectF clip = p_context.clip.isValid() ? p_context.clip : QRectF(QPointF(), m_size);
    p_painter->setPen(p_context.palette.color(QPalette::Text));
    QTextBlock block = document()->findBlockByNumber(lineAt(clip.top()));
    for (int line = block.blockNumber(); block.isValid() && top(line) < clip.bottom(); ++line) {
        QVector<QTextLayout::FormatRange> selections;
        for (const Selection& selection : p_context.selections) {
            const QTextLayout::FormatRange range = partIn(block, selection);
            if (range.length > 0) {
                selections.append(range);
            }
        }
        laidOut(block).draw(p_painter, QPointF(document()->documentMargin(), top(line)), selections,
                            clip);
        block = block.next();
    }
}

int CodeLayout::hitTest(const QPointF& p_point, Qt::HitTestAccuracy p_accuracy) const
{
    const QTextBlock block = document()->findBlockByNumber(lineAt(p_point.y()));
    const QTextLine line = laidOut(block).lineAt(0);
    const qreal x = p_point.x() - document()->documentMargin();
    const qreal y = p_point.y() - top(block.blockNumber());
    if (p_accuracy == Qt::ExactHit &&
        (y < 0 || y >= m_lineHeight || x < 0 || x >= line.naturalTextWidth())) {
        return -1;
    }
    // Below the last line is behind it.
    return block.position() + (y < m_lineHeight ? line.xToCursor(x) : block.length() - 1);
}

QRectF CodeLayout::frameBoundingRect(QTextFrame*) const { return QRectF(QPointF(), m_size); }

QRectF CodeLayout::blockBoundingRect(const QTextBlock& p_block) const
{
    // Whoever asks for the place goes on to ask the block's own layout.
    const qreal width = laidOut(p_block).lineAt(0).naturalTextWidth();
    return QRectF(document()->documentMargin(), top(p_block.blockNumber()), width, m_lineHeight);
}

void CodeLayout::documentChanged(int p_from, int, int p_added)
{
    const QFontMetricsF metrics(document()->defaultFont());
    // Some fonts have lines overlap; the light of one would hide underscores in the one above.
    m_lineHeight = qCeil(qMax(metrics.lineSpacing(), metrics.height()));
    const QTextBlock first = document()->findBlock(p_from);
    QTextBlock block = first;
    while (block.isValid() && block.position() <= p_from + p_added) {
        block.clearLayout();
        block = block.next();
    }
    const bool isMoved = m_lines != document()->blockCount();
    m_lines = document()->blockCount();
    const qreal end = isMoved || !block.isValid() ? s_noLimit : top(block.blockNumber());
    const qreal begin = top(first.blockNumber());
    emit update(QRectF(0, begin, s_noLimit, end - begin));

    int longest = 0;
    for (QTextBlock each = document()->begin(); each.isValid(); each = each.next()) {
        longest = qMax(longest, each.length());
    }
    const qreal margins = 2 * document()->documentMargin();
    const QSizeF size(margins + longest * metrics.horizontalAdvance(QLatin1Char('0')),
                      margins + m_lines * m_lineHeight);
    if (size != m_size) {
        m_size = size;
        emit documentSizeChanged(m_size);
    }
}
