#include "modules/modulehost.h"

namespace
{
ModuleHost* s_host = nullptr;
}

ModuleHost* moduleHost() { return s_host; }

void setModuleHost(ModuleHost* p_host) { s_host = p_host; }
