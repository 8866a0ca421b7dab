#pragma once

#include "modules/supermodule.h"
#include "proj/controls/picturecache.h"

#include <QPainter>
#include <QPixmap>

/** What a loop's shape differs in. */
struct LoopForm {
    int bodyOffset;     /**< x of the body's first block relative to the loop */
    int bodyConnectorX; /**< x of the body's connector */
    bool hasNext;       /**< something can follow the loop */
    int emptyHeight;    /**< height of its rectangle without a body */
    const char* frame;  /**< resource path of the bracket's picture */
};

/** Width of, and way past, a loop without a body. */
constexpr int EmptyLoopWidth = 260;
/** What a loop's rectangle adds above its content. */
constexpr int LoopTopMargin = 20;
/** Space behind the last block of a body. */
constexpr int LoopEndMargin = 40;

/** Where the first leg ends at the latest; the body of a loop with a narrow one overlaps it by 2.
 */
constexpr int LegEnd = 120;
constexpr int LegOverlap = 2;

/** A loop's C text: its head, the texts of its body one behind the other, and its end. */
QString loopText(const QString& p_head, const supermodule* p_loop, const char* p_end);

/**
 * Draws a loop's bracket: the frame picture in seven parts, the corners as they are, the edges
 * stretched to the body. p_top and p_right are the bounds relative to the loop, p_mouth is where
 * the body begins.
 */
void drawLoopFrame(QPainter* p_painter, const QPixmap& p_frame, int p_top, int p_right,
                   int p_mouth);

/**
 * Fills what the round corners of a body's blocks leave free under the bracket's head, from one x
 * to another: behind the blocks, so that at no scale anything of the ground is seen there.
 */
void fillUnderHead(QPainter* p_painter, const QPixmap& p_frame, int p_from, int p_to);
/** The same for the seam between the first leg and a body that begins at p_from. */
void fillBesideLeg(QPainter* p_painter, const QPixmap& p_frame, int p_from, bool p_toTheFoot);

/**
 * Draws the selection frame of a loop: that of the bracket, cut as the bracket is, and around the
 * drawers that hang from it.
 */
void drawLoopSelection(QPainter* p_painter, const QPixmap& p_frame, int p_top, int p_right,
                       int p_mouth, const QVector<QRect>& p_drawers);
/** What drawLoopSelection() draws on, in a loop's coordinates. */
QRect loopSelectionArea(int p_top, int p_right);

/**
 * The shape of a block with a body, on top of what its parameters are (Base). The rectangle grows
 * with the body: 20 above its content, 40 past its end. Nested loops nest these margins, and the
 * tops of inner loops that stand side by side add up.
 */
template <class Base> class loopShape : public Base
{
public:
    using Base::Base;

    QRectF boundingRect() const override { return Base::m_rect; }

    void createCollisions() override
    {
        Base::prepareGeometryChange();
        Base::m_rect = QRectF(0, -20, 280, 140);
        if (form().hasNext) {
            Base::makeConnector(NextLink, 0, QPointF(280, 30));
        }
        Base::makeConnector(LeftLink, 4, QPointF(form().bodyConnectorX, 30));
    }

    BoundsRule boundsRule(bool p_laidOut) const override
    {
        return p_laidOut ? m_laidOutRule : walkedRule(false);
    }

protected:
    virtual const LoopForm& form() const = 0;
    /** The right bound has moved, relative to the loop: what hangs on it follows. */
    virtual void placeAtEnd(int) {}

    qreal layoutOwn() override
    {
        QRectF rect(0, -20, EmptyLoopWidth, form().emptyHeight);
        if (supermodule* body = Base::left()) {
            body->setPos(Base::x() + form().bodyOffset, Base::y());
            supermodule* last = body->updateLayout();
            int left = static_cast<int>(Base::x());
            int top = static_cast<int>(Base::y());
            int right = left;
            int bottom = static_cast<int>(Base::y() + 140);
            m_laidOutRule = walkedRule(true);
            m_laidOutRule.apply(left, top, right, bottom);
            const int x = static_cast<int>(Base::x());
            const int y = static_cast<int>(Base::y());
            rect.setCoords(left - x, top - y, right - x, bottom - y);
            fillMouth(*body, *last, top - y + LoopTopMargin);
        } else {
            m_laidOutRule = walkedRule(true);
        }
        if (rect != Base::m_rect) {
            Base::prepareGeometryChange();
            Base::m_rect = rect;
            Base::moveConnector(NextLink, rect.right());
            placeAtEnd(static_cast<int>(rect.right()));
            Base::updateSelectItem();
        }
        return rect.right();
    }

    /**
     * Fills the corners between the legs and the ends of the body. Up where the mouth, from p_top
     * on, is as high as a block, the mouth is as round as that.
     */
    void fillMouth(supermodule& p_first, supermodule& p_last, int p_top)
    {
        const auto fill = [&](supermodule& p_block, BodyCorner p_leg, BodyCorner p_upper,
                              BodyCorner p_lower) {
            const bool filled = !p_block.isPreview();
            Base::fillCorners(p_leg, filled);
            p_block.fillCorners(p_lower, filled);
            p_block.fillCorners(p_upper, filled && p_block.boundingRect().top() > p_top);
        };
        fill(p_first, FirstLegCorner, TopLeftCorner, BottomLeftCorner);
        fill(p_last, LastLegCorner, TopRightCorner, BottomRightCorner);
    }

    /** The body's rule; loops in it contribute their stored rule if they are laid out. */
    BoundsRule walkedRule(bool p_laidOut) const
    {
        if (!Base::left()) {
            BoundsRule rule = Base::plainBoundsRule(QSizeF(EmptyLoopWidth, 140));
            rule.addMargins(LoopTopMargin, 0);
            return rule;
        }
        BoundsRule rule;
        for (const supermodule* each = Base::left(); each; each = each->next()) {
            rule.then(each->boundsRule(p_laidOut));
        }
        rule.addMargins(LoopTopMargin, LoopEndMargin);
        return rule;
    }

    QRectF selectionArea(const QPixmap&) const override
    {
        return loopSelectionArea(static_cast<int>(Base::m_rect.top()),
                                 static_cast<int>(Base::m_rect.right()));
    }

    void paintSelection(QPainter* p_painter, const QString& p_frame) override
    {
        QVector<QRect> drawers;
        for (int i = 0; i < Base::buttonCount(); ++i) {
            drawers.append(Base::buttonRect(i).toRect());
        }
        drawLoopSelection(p_painter, bracket(p_frame), static_cast<int>(Base::m_rect.top()),
                          static_cast<int>(Base::m_rect.right()), form().bodyOffset, drawers);
    }

    void drawFrame(QPainter* p_painter) const
    {
        const QPixmap frame = bracket(QString::fromLatin1(form().frame));
        const int top = static_cast<int>(Base::m_rect.top());
        const int right = static_cast<int>(Base::m_rect.right());
        if (Base::left()) {
            if (top == -LoopTopMargin) {
                fillUnderHead(p_painter, frame, form().bodyOffset, right - LoopEndMargin);
            }
            fillBesideLeg(p_painter, frame, form().bodyOffset,
                          Base::filledCorners() & FirstLegCorner);
        }
        drawLoopFrame(p_painter, frame, top, right, form().bodyOffset);
    }

private:
    /** The picture of the bracket or of the frame around it, as linked as the loop is. */
    QPixmap bracket(const QString& p_path) const
    {
        BodyCorners filled = Base::filledCorners();
        if (!Base::left()) {
            filled &= ~(FirstLegCorner | LastLegCorner);
        }
        return jointPicture(p_path, filled, qMin(form().bodyOffset + LegOverlap, LegEnd));
    }

    /** As the last layout found it; the bounds are those of the scene. */
    BoundsRule m_laidOutRule;
};
