#include "document/takentree.h"

#include "document/document.h"
#include "document/programslots.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"

#include <algorithm>

TakenTree::TakenTree(Document& p_document, supermodule* p_root, const Belongs& p_belongs)
    : m_key(p_root->registryKey()), m_place(ModulePlace::of(p_root))
{
    const auto belongs = [&p_belongs](const supermodule* p_module) {
        return !p_belongs || p_belongs(p_module->registryKey());
    };
    supermodule* parent = p_root->parentModule();
    const supermodule* last = p_root;
    while (last->next() && belongs(last->next())) {
        last = last->next();
    }
    supermodule* follower = parent ? last->next() : nullptr;
    QVector<supermodule*> loose;
    for (QVector<supermodule*> open{p_root}; !open.isEmpty();) {
        supermodule* owner = open.takeLast();
        for (const LinkType link : {NextLink, LeftLink, RightLink}) {
            supermodule* child = owner->child(link);
            if (!child) {
                continue;
            }
            if (belongs(child)) {
                open.append(child);
                continue;
            }
            const Left left{child->registryKey(), owner->registryKey(), link, child->pos()};
            owner->unhangModule(child);
            if (child == follower) {
                m_follower = left;
            } else {
                m_loose.append(left);
                loose.append(child);
            }
        }
    }
    if (parent) {
        parent->unhangModule(p_root);
        if (follower) {
            parent->hangModule(m_place.link, follower);
        }
        parent->updateTreeAndOpacity();
    }
    m_record = TreeRecord(p_root);
    p_document.removeModule(p_root);
    for (supermodule* each : qAsConst(loose)) {
        each->updateTreeAndOpacity();
    }
}

bool TakenTree::hangAgain(supermodule* p_module, const Document& p_document) const
{
    supermodule* parent =
        m_place.parentKey == 0 ? p_document.mainBlock() : moduleMap.value(m_place.parentKey);
    if (!parent || parent->wouldNestTooDeep(m_place.link, p_module)) {
        return false;
    }
    if (supermodule* follower = parent->child(m_place.link)) {
        supermodule* last = moduleMap.value(m_follower.ownerKey);
        if (follower->registryKey() != m_follower.key || !p_module->containsModule(last)) {
            return false;
        }
        parent->unhangModule(follower);
        last->hangModule(m_follower.link, follower);
    }
    parent->hangModule(m_place.link, p_module);
    return true;
}

void TakenTree::takeUnder(supermodule* p_module) const
{
    // All or nothing, and only if it comes to stand where it lies now: with a block in between that
    // has come or gone the next step back would leave it elsewhere.
    const auto isAsLeft = [p_module](const Left& p_left) {
        const supermodule* module = moduleMap.value(p_left.key);
        const supermodule* owner = moduleMap.value(p_left.ownerKey);
        return module && !module->parentModule() && module->pos() == p_left.position &&
               p_module->rootOf() != module && p_module->containsModule(owner) &&
               !owner->child(p_left.link) && !owner->wouldNestTooDeep(p_left.link, module);
    };
    if (m_loose.isEmpty() || !std::all_of(m_loose.cbegin(), m_loose.cend(), isAsLeft)) {
        return;
    }
    for (const Left& left : m_loose) {
        moduleMap.value(left.ownerKey)->hangModule(left.link, moduleMap.value(left.key));
    }
    p_module->updateTree();
    const bool fits = std::all_of(m_loose.cbegin(), m_loose.cend(), [](const Left& p_left) {
        return moduleMap.value(p_left.key)->pos() == p_left.position;
    });
    for (const Left& left : m_loose) {
        supermodule* module = moduleMap.value(left.key);
        if (!fits) {
            moduleMap.value(left.ownerKey)->unhangModule(module);
            module->setPos(left.position);
        }
        module->updateTreeAndOpacity();
    }
    p_module->updateTree();
}

void TakenTree::putBack(Document& p_document) const
{
    if (moduleMap.contains(m_key)) {
        return;
    }
    supermodule* module = m_record.rebuild(&p_document.scene());
    if (!module) {
        return;
    }
    module->setPos(m_place.position);
    // A loose one may lie on a connector, and stays loose.
    if (m_place.link != NoLink && !hangAgain(module, p_document)) {
        supermodule* target = nullptr;
        int type = NoLink;
        module->CollisionDetection(target, type);
    }
    module->updateTreeAndOpacity();
    takeUnder(module);
    const supermodule* parent = module->parentModule();
    const supermodule* shown = firstVisibleRoot();
    if (!(parent ? parent->isVisible() : shown && shown->id == slotOf(module))) {
        module->setVisibleTree(false);
    }
    p_document.noteContent();
}
