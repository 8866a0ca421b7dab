#include "modules/modulehost.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

namespace
{
ModuleHost* s_host = nullptr;
}

ModuleHost* moduleHost() { return s_host; }

void setModuleHost(ModuleHost* p_host) { s_host = p_host; }

void giveNumberKey(int p_key)
{
    if (focusModule) {
        focusModule->setNumberKey(p_key);
    }
}

void givePanelValue(int p_paramId, int p_value)
{
    if (focusModule) {
        focusModule->setPanelValue(p_paramId, p_value);
    }
}
