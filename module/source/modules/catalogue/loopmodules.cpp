#include "modules/catalogue/loopmodules.h"

#include "modules/fragments.h"

#include <QPainter>

namespace
{
const uint32_t s_countKeys = KeyboardDigits | KeyboardDelete;
const LoopForm s_counted = {120, 100, true, 140, ":/formodule.png"};
const LoopForm s_endless = {120, 100, false, 140, ":/forevermodule.png"};
// Meant: without a body a conditional loop's rectangle ends above its feet. The design gives it
// that height.
const LoopForm s_conditional = {40, 40, true, 100, ":/loopuntil.png"};
/** The pictures of a conditional loop's sensor, drawn for a block, stand this far left of its end.
 */
const int s_picturesFromEnd = 120;
const int s_buttonWidth = 60;
/** The middles of the legs, from the loop's beginning and from its end. */
const int s_firstLegMiddle = 21;
const int s_lastLegMiddle = 19;
/** How far a bracket goes down, and its tab to the right of its end. */
const int s_bracketBottom = 120;
const int s_tabWidth = 20;
/** How far the round corners of blocks reach down, and where a bracket's picture is plain. */
const int s_cornerHeight = 13;
const QRect s_plain(132, 6, 1, 1);

/**
 * The lower ends of an empty conditional loop's legs. Its rectangle ends above them; the scene
 * paints and hits nothing outside of rectangles, so that they are an item of their own.
 */
class LoopFeet final : public QGraphicsItem
{
public:
    explicit LoopFeet(loopUntilModule& p_loop) : QGraphicsItem(&p_loop), m_loop(p_loop)
    {
        setFlag(ItemStacksBehindParent);
    }

    int type() const override { return ModulePartItemType; }
    QRectF boundingRect() const override
    {
        const int top = s_conditional.emptyHeight - LoopTopMargin;
        return QRectF(0, top, EmptyLoopWidth + s_tabWidth, s_bracketBottom - top);
    }
    QPainterPath shape() const override
    {
        return m_loop.left() ? QPainterPath() : QGraphicsItem::shape();
    }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*) override
    {
        if (!m_loop.left()) {
            p_painter->save();
            p_painter->setClipRect(boundingRect(), Qt::IntersectClip);
            m_loop.drawBracket(p_painter);
            p_painter->restore();
        }
    }

private:
    loopUntilModule& m_loop;
};
} // namespace

QString loopText(const QString& p_head, const supermodule* p_loop, const char* p_end)
{
    QString text = p_head;
    appendFragments(text, p_loop->left(), &supermodule::cCode);
    text += QLatin1String(p_end);
    return text;
}

void drawLoopFrame(QPainter* p_painter, const QPixmap& p_frame, int p_top, int p_right, int p_mouth)
{
    const int width = p_frame.width();
    const int height = p_frame.height();
    if (width == 0) {
        return;
    }
    // The corners of the cut, as first x, first y, width, height.
    const int rightX = width - 70;
    const QRect topLeft(0, 0, 130, 30);
    const QRect topRight(rightX, 0, 70, 30);
    const QRect leftEdge(0, 30, 120, 10);
    const QRect rightEdge(rightX, 30, 70, 10);
    const QRect topEdge(130, 0, width - 200, 20);
    const QRect bottomLeft(0, 40, 140, height - 40);
    const QRect bottomRight(rightX, 40, 70, height - 40);

    const int innerWidth = p_right - topLeft.width() - topRight.width() + 20;
    const int edgeHeight = -10 - p_top;
    const int edgeY = p_top + topLeft.height();
    const int bottomY = edgeY + edgeHeight;
    const int endX = topLeft.width() + innerWidth;
    const auto draw = [&](const QRect& p_target, const QRect& p_source) {
        drawPicturePart(p_painter, p_target, p_frame, p_source);
    };
    // The first corner's part has an edge of the mouth, too, where that begins early. Smooth
    // scaling would make it another one than that of the part behind it, which takes it over.
    const int edgeX = qMin(topLeft.width(), p_mouth + 14);
    draw(QRect(0, p_top, edgeX, topLeft.height()), topLeft.intersected(QRect(0, 0, edgeX, height)));
    draw(QRect(0, edgeY, leftEdge.width(), edgeHeight), leftEdge);
    draw(QRect(0, bottomY, bottomLeft.width(), bottomLeft.height()), bottomLeft);
    draw(QRect(edgeX, p_top, endX - edgeX, topEdge.height()), topEdge);
    draw(QRect(endX, p_top, topRight.width(), topRight.height()), topRight);
    draw(QRect(endX, edgeY, rightEdge.width(), edgeHeight), rightEdge);
    draw(QRect(endX, bottomY, bottomRight.width(), bottomRight.height()), bottomRight);
}

void fillUnderHead(QPainter* p_painter, const QPixmap& p_frame, int p_from, int p_to)
{
    p_painter->drawPixmap(QRect(p_from - 2, -2, p_to - p_from + 4, s_cornerHeight + 2), p_frame,
                          s_plain);
}

void fillBesideLeg(QPainter* p_painter, const QPixmap& p_frame, int p_from, bool p_toTheFoot)
{
    // Within the rim, or down to where the corners begin.
    const int height = s_bracketBottom - (p_toTheFoot ? 1 : s_cornerHeight);
    p_painter->drawPixmap(QRect(p_from - 2, 0, 4, height), p_frame, s_plain);
}

void drawLoopSelection(QPainter* p_painter, const QPixmap& p_frame, int p_top, int p_right,
                       int p_mouth, const QVector<QRect>& p_drawers)
{
    drawLoopFrame(p_painter, p_frame, p_top, p_right, p_mouth);
    const QPixmap drawer = picture(QStringLiteral(":/select_drawer.png"));
    const int half = drawer.width() / 2;
    for (int i = 0; i < p_drawers.size(); ++i) {
        QRect place = p_drawers.at(i);
        while (i + 1 < p_drawers.size() && p_drawers.at(i + 1).left() == place.right() + 1) {
            place |= p_drawers.at(++i);
        }
        // Both ends as they are, and between them what is straight.
        const int left = place.left() - 2;
        const int right = place.right() + 3 - half;
        const int middle = right - left - half;
        const auto draw = [&](int p_x, int p_width, int p_from, int p_fromWidth) {
            drawPicturePart(p_painter, QRect(p_x, place.top(), p_width, drawer.height()), drawer,
                            QRect(p_from, 0, p_fromWidth, drawer.height()));
        };
        const int first = qMin(half, half + middle);
        const int cut = qMax(0, -middle);
        draw(left, first, 0, first);
        if (middle > 0) {
            draw(left + half, middle, half, 1);
        }
        draw(right + cut, half - cut, half + cut, half - cut);
    }
}

QRect loopSelectionArea(int p_top, int p_right)
{
    // How far a drawer, and the frame around it, may reach out of the bracket.
    const QMargins out(16, 0, s_tabWidth, 24);
    return QRect(QPoint(0, p_top), QPoint(p_right - 1, s_bracketBottom - 1)).marginsAdded(out);
}

void repeatModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawFrame(p_painter);
    drawPicture(p_painter, ":/repeat_icon.png");
}

QString forModule::cCode() const
{
    // Meant: no line feed around the closing brace, and the same counter in every loop, so that an
    // inner one hides the outer one's. Generated text stays byte for byte the same.
    return loopText(QStringLiteral("for(int i = 0;i < %1; ++i)\n{\n").arg(n), this, "}");
}

void forModule::loadXml(const QDomElement& p_element)
{
    loopShape::loadXml(p_element);
    n = numberIn(p_element, "n");
    showOnButton(0, QString::number(n));
}

void forModule::writeAttributes(QDomElement& p_element) const
{
    p_element.setAttribute(QStringLiteral("n"), n);
}

void forModule::createButtons() { addOnlyNumberField(80, s_countKeys, QString::number(n)); }

const LoopForm& forModule::form() const { return s_counted; }

QString foreverModule::cCode() const
{
    // Meant: no line feed around the closing brace, as in forModule.
    return loopText(QStringLiteral("while(1)\n{\n"), this, "}");
}

const LoopForm& foreverModule::form() const { return s_endless; }

QString loopUntilModule::cCode() const { return loopText(whileText(), this, "\n}\n"); }

const LoopForm& loopUntilModule::form() const { return s_conditional; }

void loopUntilModule::createCollisions()
{
    loopShape::createCollisions();
    // Owned by this item, its parent.
    new LoopFeet(*this);
}

void loopUntilModule::createButtons()
{
    addSensorButtons(0);
    placeAtEnd(static_cast<int>(m_rect.right()));
}

void loopUntilModule::placeAtEnd(int p_right)
{
    if (left()) {
        // The body's blocks have drawers of their own, which would cover both: so each leg of a
        // filled loop has one, in its middle.
        moveButton(0, s_firstLegMiddle - s_buttonWidth / 2);
        moveButton(1, p_right - s_lastLegMiddle - s_buttonWidth / 2);
    } else {
        moveButton(0, p_right - 2 * s_buttonWidth);
        moveButton(1, p_right - s_buttonWidth);
    }
}

void loopUntilModule::drawBracket(QPainter* p_painter) const
{
    drawFrame(p_painter);
    const int origin = static_cast<int>(m_rect.right()) - s_picturesFromEnd;
    drawPicture(p_painter, look().overlay, origin, 0);
    drawPicture(p_painter, conditionPicture(), origin + 86, 10);
}

void loopUntilModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (left()) {
        drawBracket(p_painter);
        return;
    }
    p_painter->save();
    p_painter->setClipRect(m_rect.adjusted(0, 0, s_tabWidth, 0), Qt::IntersectClip);
    drawBracket(p_painter);
    p_painter->restore();
}
