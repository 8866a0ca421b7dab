#include "modules/moduletree.h"

#include "modules/documentstate.h"

#include <QGraphicsScene>

#include <algorithm>

namespace
{
/** Blocks to pass while others are looked for; below that it takes longer to put them first. */
const qint64 s_manySteps = 10000000;
} // namespace

supermodule* supermodule::rootOf()
{
    supermodule* module = this;
    while (module->m_parent) {
        module = module->m_parent;
    }
    return module;
}

supermodule* supermodule::lastOf()
{
    supermodule* module = this;
    while (module->m_next) {
        module = module->m_next;
    }
    return module;
}

int supermodule::depth() const
{
    int depth = 0;
    for (const supermodule* module = this; module->m_parent; module = module->m_parent) {
        if (module->m_parent->linkOf(module) != NextLink) {
            ++depth;
        }
    }
    return depth;
}

int nestingDepth(const supermodule* p_root)
{
    int deepest = 0;
    QVector<QPair<const supermodule*, int>> open{{p_root, 0}};
    while (!open.isEmpty()) {
        const auto [module, depth] = open.takeLast();
        if (!module) {
            continue;
        }
        deepest = qMax(deepest, depth);
        open.append({module->next(), depth});
        open.append({module->left(), depth + 1});
        open.append({module->right(), depth + 1});
    }
    return deepest;
}

bool supermodule::isAncestor(const supermodule* p_a, const supermodule* p_b)
{
    if (!p_a || !p_b) {
        return false;
    }
    for (const supermodule* module = p_b->m_parent; module; module = module->m_parent) {
        if (module == p_a) {
            return true;
        }
    }
    return false;
}

bool supermodule::containsModule(const supermodule* p_module) const
{
    return p_module == this || isAncestor(this, p_module);
}

void supermodule::setOpacityTree(bool p_dim)
{
    const qreal opacity = p_dim ? 0.5 : 1.0;
    forEachModule(this, [opacity](supermodule* p_each) { p_each->setOpacity(opacity); });
}

void supermodule::setVisibleTree(bool p_visible)
{
    forEachModule(this, [p_visible](supermodule* p_each) { p_each->setVisible(p_visible); });
}

void supermodule::setSelectTree(bool p_selected)
{
    forEachModule(this, [p_selected](supermodule* p_each) {
        if (p_selected || p_each->m_selectItem) {
            p_each->selectItem().setVisible(p_selected);
        }
    });
}

void supermodule::setTreeZValue(int p_z)
{
    forEachModule(this, [p_z](supermodule* p_each) {
        if (p_each->zValue() != p_z) {
            p_each->setZValue(p_z);
        }
    });
}

bool supermodule::isInProgram()
{
    supermodule* root = rootOf();
    return taskModules.contains(root) || rootModules.contains(root);
}

void supermodule::refreshOpacity()
{
    supermodule* root = rootOf();
    root->setOpacityTree(!root->isInProgram());
}

void supermodule::updateTreeAndOpacity()
{
    updateTree();
    refreshOpacity();
    stackAboveLoops();
}

void supermodule::stackAboveLoops()
{
    // stackBefore() can only move an item below another. So the loops are moved below the block,
    // and each takes those around it along.
    supermodule* inner = nullptr;
    for (supermodule* each = this; scene() && each->m_parent; each = each->m_parent) {
        supermodule* loop = each->m_parent;
        if (loop->linkOf(each) == NextLink) {
            continue;
        }
        if (inner) {
            loop->stackBefore(inner);
        } else {
            // The oldest block is likely to be the lowest: then the loop moves but once.
            supermodule* eldest = this;
            forEachModule(this, [&eldest](supermodule* p_each) {
                if (p_each->registryKey() < eldest->registryKey()) {
                    eldest = p_each;
                }
            });
            loop->stackBefore(eldest);
            forEachModule(this, [loop](supermodule* p_each) { loop->stackBefore(p_each); });
        }
        inner = loop;
    }
}

bool supermodule::isSubProgramBlock() { return rootModules.indexOf(rootOf()) > 0; }

supermodule* supermodule::deepClone(const supermodule* p_module)
{
    const supermodule* slot = firstVisibleRoot();
    supermodule* first = nullptr;
    supermodule* last = nullptr;
    for (const supermodule* each = p_module; each; each = each->m_next) {
        supermodule* copy = each->clone();
        if (!copy) {
            break;
        }
        copy->enterScene(each->scene());
        copy->ownid = slot ? slot->id : each->ownid;
        if (last) {
            last->hangModule(NextLink, copy);
        } else {
            first = copy;
        }
        last = copy;
        for (const LinkType type : {LeftLink, RightLink}) {
            if (supermodule* body = deepClone(each->child(type))) {
                copy->hangModule(type, body);
            }
        }
    }
    return first;
}

void supermodule::deleteTree(supermodule* p_module)
{
    QVector<supermodule*> modules;
    forEachModule(p_module, [&modules](supermodule* p_each) { modules.append(p_each); });
    deleteModules(modules);
}

void supermodule::deleteModules(QVector<supermodule*> p_modules)
{
    if (p_modules.isEmpty()) {
        return;
    }
    // The scene looks for each item from its eldest on, and moves what lies behind.
    std::sort(
        p_modules.begin(), p_modules.end(),
        [](const supermodule* p_a, const supermodule* p_b) { return p_a->m_age < p_b->m_age; });
    QGraphicsScene* stage = p_modules.first()->scene();
    const bool first = stage && isWorthPuttingFirst(p_modules);
    if (first) {
        putFirst(*stage, p_modules);
    }
    for (supermodule* module : qAsConst(p_modules)) {
        if (module->scene()) {
            module->scene()->removeItem(module);
        }
        delete module;
    }
    if (first) {
        stage->setItemIndexMethod(QGraphicsScene::NoIndex);
    }
}

bool supermodule::isWorthPuttingFirst(const QVector<supermodule*>& p_modules)
{
    return p_modules.first()->scene()->itemIndexMethod() == QGraphicsScene::NoIndex &&
           qint64(p_modules.size()) * liveModules.size() > s_manySteps;
}

void supermodule::putFirst(QGraphicsScene& p_stage, QVector<supermodule*>& p_byAge)
{
    std::reverse(p_byAge.begin(), p_byAge.end());
    p_stage.update();
    // The list of the items without parent is kept as they are stacked, and sorted when the scene
    // is asked for items at a place.
    for (supermodule* module : qAsConst(p_byAge)) {
        module->setZValue(-module->m_age);
    }
    p_stage.items(QPointF());
    // The list of all items is kept by their addresses. One that comes from another index is in the
    // order of stacking, and as long as nothing asks that index for items at a place, it keeps a
    // plain list like this one, the other way round.
    for (supermodule* module : qAsConst(p_byAge)) {
        module->setZValue(module->m_age);
    }
    p_stage.setItemIndexMethod(QGraphicsScene::BspTreeIndex);
    p_stage.setItemIndexMethod(QGraphicsScene::NoIndex);
    p_stage.setItemIndexMethod(QGraphicsScene::BspTreeIndex);
}
