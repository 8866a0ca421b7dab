#include "modules/moduleregistry.h"

#include "modules/documentstate.h"
#include "modules/moduletree.h"
#include "modules/supermodule.h"

int ModuleRegistry::add(supermodule* p_module)
{
    const int key = nextModuleKey++;
    addAs(key, p_module);
    return key;
}

void ModuleRegistry::addAs(int p_key, supermodule* p_module)
{
    moduleMap.remove(p_module->m_registryKey);
    if (supermodule* before = moduleMap.value(p_key)) {
        before->m_registryKey = 0;
    }
    moduleMap.insert(p_key, p_module);
    p_module->m_registryKey = p_key;
}

void ModuleRegistry::clear()
{
    for (supermodule* module : qAsConst(moduleMap)) {
        module->m_registryKey = 0;
    }
    moduleMap.clear();
    nextModuleKey = 1;
}

QVector<int> ModuleRegistry::keysUnder(supermodule* p_module)
{
    QVector<int> keys;
    forEachModule(p_module, [&keys](supermodule* p_each) { keys.append(p_each->m_registryKey); });
    return keys;
}

void ModuleRegistry::remember(supermodule* p_module)
{
    static qint64 s_age = 0;
    p_module->m_age = ++s_age;
    p_module->m_liveIndex = liveModules.size();
    liveModules.append(p_module);
}

void ModuleRegistry::forget(supermodule* p_module)
{
    if (p_module->m_registryKey != 0) {
        moduleMap.remove(p_module->m_registryKey);
    }
    rootModules.removeAll(p_module);
    taskModules.removeAll(p_module);
    // The last one moves into the gap: removal in constant time.
    supermodule* last = liveModules.takeLast();
    if (last != p_module) {
        liveModules[p_module->m_liveIndex] = last;
        last->m_liveIndex = p_module->m_liveIndex;
    }
}
