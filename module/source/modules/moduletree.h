#pragma once

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
