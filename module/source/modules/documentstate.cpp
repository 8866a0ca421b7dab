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
