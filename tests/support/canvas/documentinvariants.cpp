#include "support/canvas/documentinvariants.h"

#include "canvas/tzprogramview.h"
#include "document/programslots.h"
#include "document/tzprogramscene.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "support/canvas/blockdata.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace
{
/** Where a loop's body begins, from the loop; 0 for a block that is no loop. */
int bodyOffset(const supermodule* p_module)
{
    const BlockData* data = blockDataOf(p_module->id);
    return data ? data->bodyOffset() : 0;
}

struct Bounds {
    int left;
    int top;
    int right;
    int bottom;
};

/** Grows bounds over a block and its body, by the rules and not by the program's own hand. */
void grow(const supermodule* p_module, Bounds& p_bounds)
{
    if (bodyOffset(p_module) != 0 && p_module->left()) {
        for (const supermodule* each = p_module->left(); each; each = each->next()) {
            grow(each, p_bounds);
        }
        p_bounds.right += 40;
    } else {
        const QPointF at = p_module->scenePos();
        const QSizeF size =
            bodyOffset(p_module) != 0 ? QSizeF(260, 140) : p_module->boundingRect().size();
        p_bounds.left = qMin(p_bounds.left, qRound(at.x()));
        p_bounds.top = qMin(p_bounds.top, qRound(at.y()));
        p_bounds.right = qMax(p_bounds.right, qRound(at.x() + size.width()));
        p_bounds.bottom = qMax(p_bounds.bottom, qRound(at.y() + size.height()));
    }
    if (bodyOffset(p_module) != 0) {
        p_bounds.top -= 20;
    }
}

/** To the last bit, unlike a comparison of points. */
bool isWhole(const QPointF& p_point)
{
    return p_point.x() - std::floor(p_point.x()) <= 0 && p_point.y() - std::floor(p_point.y()) <= 0;
}

QRectF loopRect(const supermodule* p_loop)
{
    if (!p_loop->left()) {
        return QRectF(0, -20, 260, bodyOffset(p_loop) == 40 ? 100 : 140);
    }
    const int x = static_cast<int>(p_loop->scenePos().x());
    const int y = static_cast<int>(p_loop->scenePos().y());
    Bounds bounds{x, y, x, static_cast<int>(p_loop->scenePos().y() + 140)};
    grow(p_loop, bounds);
    return QRectF(QPointF(bounds.left - x, bounds.top - y),
                  QPointF(bounds.right - x, bounds.bottom - y));
}

class Inspector
{
public:
    explicit Inspector(const TzProgramView& p_view)
        : m_view(p_view), m_blocks(canvasBlocks(p_view)), m_known(m_blocks.begin(), m_blocks.end())
    {
        for (supermodule* block : qAsConst(m_blocks)) {
            if (block->m_moved) {
                m_inTheAir.append(block);
            }
        }
        // Hidden and the one that the view holds: on its way from the palette.
        supermodule* current = p_view.currentModule();
        if (current && !current->isVisible() && p_view.mainBlock()->isVisible()) {
            m_incoming = current;
        }
    }

    QStringList inspect()
    {
        inspectDrag();
        for (supermodule* block : qAsConst(m_blocks)) {
            m_name = QStringLiteral("block %1 key %2").arg(block->id).arg(block->registryKey());
            inspectLinks(block);
        }
        // With broken links no walk ends for sure.
        if (!m_broken.isEmpty()) {
            return m_broken;
        }
        for (supermodule* block : qAsConst(m_blocks)) {
            m_name = QStringLiteral("block %1 key %2").arg(block->id).arg(block->registryKey());
            inspectState(block);
            if (block != m_incoming && !isOutsideTheLayout(block)) {
                inspectPlace(block);
            }
        }
        inspectRegistry();
        inspectScene();
        return m_broken;
    }

private:
    void tell(bool p_good, const char* p_what)
    {
        if (!p_good) {
            m_broken << m_name + QLatin1Char(' ') + QString::fromLatin1(p_what);
        }
    }
    bool isInScene(const supermodule* p_module) const
    {
        return m_known.contains(p_module) || (p_module == m_view.preview() && isDragging());
    }
    bool isDragging() const { return m_incoming || !m_inTheAir.isEmpty(); }
    bool hangsInTheAir(const supermodule* p_module) const
    {
        return m_incoming == p_module ||
               (!m_inTheAir.isEmpty() && m_inTheAir.first()->containsModule(p_module));
    }

    /**
     * True for what hangs on a right branch, or on the left one of a block that is no loop. Only a
     * file can bring such a branch in, and the layout leaves it where it is.
     */
    static bool isOutsideTheLayout(const supermodule* p_module)
    {
        const supermodule* parent = p_module->parentModule();
        for (const supermodule* child = p_module; parent;
             child = parent, parent = child->parentModule()) {
            if (parent->right() == child || (parent->left() == child && bodyOffset(parent) == 0)) {
                return true;
            }
        }
        return false;
    }

    void inspectDrag()
    {
        m_name = QStringLiteral("the drag");
        tell(m_inTheAir.size() <= 1, "holds more than one block");
        m_name = QStringLiteral("the preview");
        const FeedbackModule* preview = m_view.preview();
        if (!isDragging()) {
            tell(!preview->isVisible(), "is still seen");
            tell(!preview->parentModule() && !preview->next(), "is still linked");
        }
        tell(!preview->left() && !preview->right(), "has a body");
    }

    void inspectLinks(supermodule* p_block)
    {
        const supermodule* parent = p_block->parentModule();
        if (parent) {
            const int links = int(parent->next() == p_block) + int(parent->left() == p_block) +
                              int(parent->right() == p_block);
            tell(isInScene(parent), "has a parent that isn't in the scene");
            tell(links == 1, "isn't known to its parent");
        }
        for (const supermodule* child : {p_block->next(), p_block->left(), p_block->right()}) {
            tell(!child || isInScene(child), "links to what isn't in the scene");
            tell(!child || child->parentModule() == p_block, "has a child that doesn't know it");
        }
        int steps = 0;
        while (parent && steps <= m_blocks.size() + 1) {
            parent = parent->parentModule();
            ++steps;
        }
        tell(!parent, "is its own ancestor");
    }

    void inspectState(supermodule* p_block)
    {
        if (!hangsInTheAir(p_block)) {
            const qreal opacity = p_block->isInProgram() ? 1.0 : 0.5;
            tell(qAbs(p_block->opacity() - opacity) < 0.01, "has the wrong opacity");
            tell(qFuzzyIsNull(p_block->zValue()), "stands above the others");
            tell(p_block->parentModule() || isWhole(p_block->pos()),
                 "has a place that no file can hold");
        }
        if (p_block != m_incoming) {
            tell(p_block->isVisible() == p_block->rootOf()->isVisible(),
                 "is seen, or not, unlike its chain");
            tell(p_block->isVisible() || !m_view.mainBlock()->isVisible() ||
                     slotOf(p_block->rootOf()) != 0,
                 "is hidden");
        }
    }

    void inspectPlace(supermodule* p_block)
    {
        const QPointF at = p_block->scenePos();
        const bool loop = bodyOffset(p_block) != 0;
        const QRectF rect = loop ? loopRect(p_block) : p_block->boundingRect();
        if (p_block->boundingRect() != rect) {
            m_broken << m_name + QStringLiteral(" has the wrong size: right %1, not %2; top %3, "
                                                "not %4")
                                     .arg(p_block->boundingRect().right())
                                     .arg(rect.right())
                                     .arg(p_block->boundingRect().top())
                                     .arg(rect.top());
        }
        const supermodule* next = p_block->next();
        tell(!next || next->scenePos() == at + QPointF(rect.right(), 0),
             "has its follower in the wrong place");
        tell(!loop || !p_block->left() ||
                 p_block->left()->scenePos() == at + QPointF(bodyOffset(p_block), 0),
             "has its body in the wrong place");
        inspectCorners(p_block);
        const collisionItem* end = p_block->connector(NextLink);
        tell(!end || qFuzzyCompare(end->x(), rect.right()), "has its connector in the wrong place");
    }

    /** Filled to a neighbour or a leg, and round to the ground and to what may go again. */
    void inspectCorners(supermodule* p_block)
    {
        const auto stays = [](const supermodule* p_each) { return p_each && !p_each->isPreview(); };
        const supermodule* parent = p_block->parentModule();
        const bool first = parent && parent->next() != p_block;
        const supermodule* head = p_block;
        while (!p_block->next() && head->parentModule() && head->parentModule()->next() == head) {
            head = head->parentModule();
        }
        const bool last = !p_block->next() && head->parentModule();
        tell(p_block->filledCorners().testFlag(BottomLeftCorner) ==
                 (stays(p_block) && (first || stays(parent))),
             "has the wrong corner in front");
        tell(p_block->filledCorners().testFlag(BottomRightCorner) ==
                 (stays(p_block) && (last || stays(p_block->next()))),
             "has the wrong corner behind");
    }

    void inspectRegistry()
    {
        for (auto it = moduleMap.constBegin(); it != moduleMap.constEnd(); ++it) {
            m_name = QStringLiteral("key %1").arg(it.key());
            tell(m_known.contains(it.value()), "leads to a dead block");
            tell(!m_known.contains(it.value()) || it.value()->registryKey() == it.key(),
                 "leads to a block with another key");
            tell(it.key() < nextModuleKey, "was never given");
        }
        for (const supermodule* block : qAsConst(m_blocks)) {
            m_name = QStringLiteral("block %1 key %2").arg(block->id).arg(block->registryKey());
            // A reset document leaves the main block out.
            tell(block == m_view.mainBlock() || moduleMap.value(block->registryKey()) == block,
                 "isn't registered");
        }
        for (const QList<supermodule*>* roots : {&rootModules, &taskModules}) {
            m_name = QStringLiteral("the list of roots");
            tell(!roots->isEmpty() && roots->first() == m_view.mainBlock(),
                 "doesn't begin with the main block");
            for (const supermodule* root : *roots) {
                tell(m_known.contains(root), "holds a dead block");
            }
        }
    }

    void inspectScene()
    {
        const QList<QGraphicsItem*> items = m_view.scene()->items();
        const QGraphicsItem* logo = &static_cast<tzprogramscene*>(m_view.scene())->logo();
        for (QGraphicsItem* item : items) {
            m_name = QStringLiteral("an item of type %1").arg(item->type());
            const bool block = supermodule::fromItem(item);
            tell(block || item->parentItem() || item == logo ||
                     item->type() == graphicsItem_Param::Type,
                 "is left over in the scene");
            tell(!block || !item->parentItem(), "is a block inside another item");
        }
    }

    const TzProgramView& m_view;
    const QList<supermodule*> m_blocks;
    const QSet<const supermodule*> m_known;
    QList<supermodule*> m_inTheAir;
    const supermodule* m_incoming = nullptr;
    QString m_name;
    QStringList m_broken;
};
} // namespace

QList<supermodule*> canvasBlocks(const TzProgramView& p_view)
{
    QList<supermodule*> list;
    const QList<QGraphicsItem*> items = p_view.scene()->items();
    for (QGraphicsItem* item : items) {
        supermodule* module = supermodule::fromItem(item);
        if (module && module != p_view.preview()) {
            list.append(module);
        }
    }
    return list;
}

QStringList brokenInvariants(const TzProgramView& p_view) { return Inspector(p_view).inspect(); }

QList<QByteArray> storedChains(const QByteArray& p_file)
{
    QList<QByteArray> chains;
    int from = 0;
    for (int at = p_file.indexOf("\n    <"); at >= 0; at = p_file.indexOf("\n    <", at + 1)) {
        chains.append(p_file.mid(from, at - from));
        from = at;
    }
    chains.append(p_file.mid(from));
    std::sort(chains.begin(), chains.end());
    return chains;
}
