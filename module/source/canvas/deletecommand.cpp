#include "deletecommand.h"

#include "documentstate.h"
#include "moduletree.h"
#include "projectdocument.h"
#include "supermodule.h"
#include "tzprogramview.h"

namespace moduleUndoCommand
{
deleteCommand::deleteCommand(TzProgramView* p_view, supermodule* p_module,
                             const QPointF& p_position)
    : m_view(p_view), m_keys(registryKeysUnder(p_module)), m_position(p_position)
{
    // The chain and the bodies go with the block, so all of them are written down.
    QDomElement node = m_document.createElement(QStringLiteral("node"));
    m_document.appendChild(node);
    writeChain(node, m_document, p_module);
}

void deleteCommand::redo()
{
    m_view->removeModule(moduleMap.value(m_keys.first()));
    documentModified = true;
}

void deleteCommand::undo()
{
    if (moduleMap.contains(m_keys.first())) {
        return;
    }
    supermodule* module = buildChain(
        m_document.documentElement().firstChildElement(QStringLiteral("module")), m_view->scene());
    if (!module) {
        return;
    }
    restoreRegistryKeys(module, m_keys);
    module->setPos(m_position);
    supermodule* target = nullptr;
    int type = NoLink;
    module->CollisionDetection(target, type);
    module->updateTreeAndOpacity();
    documentModified = true;
    emit m_view->moduleUpdateSignal();
}
} // namespace moduleUndoCommand
