#include "canvas/deletecommand.h"

#include "canvas/tzprogramview.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "modules/supermodule.h"
#include "project/projectdocument.h"

namespace moduleUndoCommand
{
deleteCommand::deleteCommand(TzProgramView* p_view, supermodule* p_module,
                             const ModulePlace& p_place)
    : m_view(p_view), m_key(p_module->registryKey()), m_place(p_place)
{
}

void deleteCommand::redo()
{
    supermodule* module = moduleMap.value(m_key);
    if (!module) {
        return;
    }
    if (!m_keys.isEmpty()) {
        m_place = ModulePlace::of(module);
    }
    // Written down anew each time: drops and moves since the last undo aren't commands. The chain
    // and the bodies go with the block, so all of them are.
    m_keys = ModuleRegistry::keysUnder(module);
    m_document = QDomDocument();
    QDomElement node = m_document.createElement(QStringLiteral("node"));
    m_document.appendChild(node);
    writeChain(node, m_document, module);
    m_view->removeModule(module);
    documentModified = true;
}

bool deleteCommand::hangAgain(supermodule* p_module) const
{
    supermodule* parent =
        m_place.parentKey == 0 ? m_view->mainBlock() : moduleMap.value(m_place.parentKey);
    if (!parent) {
        return false;
    }
    // The parent may have been moved away since. A link without a connector came from a file.
    collisionItem* connector = parent->connector(m_place.link);
    if (parent->child(m_place.link) ||
        (connector && !p_module->touchedConnectors().contains(connector))) {
        return false;
    }
    parent->hangModule(m_place.link, p_module);
    return true;
}

void deleteCommand::undo()
{
    if (moduleMap.contains(m_key)) {
        return;
    }
    supermodule* module = buildChain(
        m_document.documentElement().firstChildElement(QStringLiteral("module")), m_view->scene());
    if (!module) {
        return;
    }
    ModuleRegistry::restoreKeys(module, m_keys);
    module->setPos(m_place.position);
    // Behind a loop a block touches the end of the loop's body as well, and a loose one may lie on
    // a connector.
    if (m_place.link != NoLink && !hangAgain(module)) {
        supermodule* target = nullptr;
        int type = NoLink;
        module->CollisionDetection(target, type);
    }
    module->updateTreeAndOpacity();
    documentModified = true;
    emit m_view->moduleUpdateSignal();
}
} // namespace moduleUndoCommand
