#pragma once

#include "modules/collisionitem.h"

#include <QPointF>

class supermodule;

/** Where a block stands and hangs, in terms that outlive blocks. */
struct ModulePlace {
    QPointF position;
    /** The parent's key; the main block may have none, which is 0. */
    int parentKey = 0;
    LinkType link = NoLink;

    /** The place of a block as it stands now. */
    static ModulePlace of(const supermodule* p_module);
};
