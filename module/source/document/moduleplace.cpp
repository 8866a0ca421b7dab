#include "document/moduleplace.h"

#include "modules/supermodule.h"

ModulePlace ModulePlace::of(const supermodule* p_module)
{
    ModulePlace place;
    place.position = p_module->scenePos();
    if (const supermodule* parent = p_module->parentModule()) {
        place.parentKey = parent->registryKey();
        place.link = parent->linkOf(p_module);
    }
    return place;
}
