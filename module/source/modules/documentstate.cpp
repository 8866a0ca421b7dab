#include "modules/documentstate.h"

#include "modules/supermodule.h"

QList<supermodule*> rootModules;
QList<supermodule*> taskModules;
QMap<int, supermodule*> moduleMap;
int nextModuleKey = 1;
QPointer<supermodule> focusModule;
QPointer<supermodule> pressedModule;
bool documentModified = false;
QVector<supermodule*> liveModules;

void setDocumentModified(bool p_modified) { documentModified = p_modified; }

supermodule* firstVisibleRoot(int p_from)
{
    for (int i = p_from; i < rootModules.size(); ++i) {
        if (rootModules.at(i)->isVisible()) {
            return rootModules.at(i);
        }
    }
    return nullptr;
}

int registerModule(supermodule* p_module)
{
    const int key = nextModuleKey++;
    registerModuleAs(key, p_module);
    return key;
}

void registerModuleAs(int p_key, supermodule* p_module)
{
    moduleMap.remove(p_module->registryKey);
    if (supermodule* before = moduleMap.value(p_key)) {
        before->registryKey = 0;
    }
    moduleMap.insert(p_key, p_module);
    p_module->registryKey = p_key;
}

void resetRegistry()
{
    for (supermodule* module : qAsConst(moduleMap)) {
        module->registryKey = 0;
    }
    moduleMap.clear();
    nextModuleKey = 1;
}

void rememberModule(supermodule* p_module)
{
    p_module->liveIndex = liveModules.size();
    liveModules.append(p_module);
}

void forgetModule(supermodule* p_module)
{
    if (p_module->registryKey != 0) {
        moduleMap.remove(p_module->registryKey);
    }
    rootModules.removeAll(p_module);
    taskModules.removeAll(p_module);
    // The last one takes its place.
    supermodule* last = liveModules.takeLast();
    if (last != p_module) {
        liveModules[p_module->liveIndex] = last;
        last->liveIndex = p_module->liveIndex;
    }
}
