#pragma once

#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QVarLengthArray>

/**
 * Calls p_visit for a block and for all under it, parents before children, each once. Walks with
 * a stack of its own, so that neither length nor nesting can overflow the real one.
 * p_visit must not change links.
 */
template <class Visit> void forEachModule(supermodule* p_module, Visit p_visit)
{
    QVarLengthArray<supermodule*, 64> open;
    if (p_module) {
        open.append(p_module);
    }
    while (!open.isEmpty()) {
        supermodule* module = open.back();
        open.removeLast();
        p_visit(module);
        for (supermodule* child : {module->next(), module->left(), module->right()}) {
            if (child) {
                open.append(child);
            }
        }
    }
}

/** How deep bodies may stand in one another: a project file holds no more. */
constexpr int MaximalNesting = 498;

/** How deep bodies stand in one another in a chain and under it; 0 without any body. */
int nestingDepth(const supermodule* p_root);

/** The registry keys of a block and of all under it, in the order of forEachModule(). */
inline QVector<int> registryKeysUnder(supermodule* p_module)
{
    QVector<int> keys;
    forEachModule(p_module, [&keys](supermodule* p_each) { keys.append(p_each->registryKey); });
    return keys;
}

/**
 * Registers a block and all under it, rebuilt in the shape that they had, under their old keys. A
 * key under which a block still lives stays that block's: it may have been moved elsewhere since.
 */
inline void restoreRegistryKeys(supermodule* p_module, const QVector<int>& p_keys)
{
    int i = 0;
    forEachModule(p_module, [&](supermodule* p_each) {
        if (i < p_keys.size() && p_keys.at(i) != 0 && !moduleMap.contains(p_keys.at(i))) {
            registerModuleAs(p_keys.at(i), p_each);
        }
        ++i;
    });
}
