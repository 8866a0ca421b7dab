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
    : m_view(p_view), m_key(p_module->registryKey), m_position(p_position)
{
}

void deleteCommand::redo()
{
    supermodule* module = moduleMap.value(m_key);
    if (!module) {
        return;
    }
    if (!m_keys.isEmpty()) {
        m_position = module->scenePos();
    }
    // Written down anew each time: drops and moves since the last undo aren't commands. The chain
    // and the bodies go with the block, so all of them are.
    m_keys = registryKeysUnder(module);
    m_document = QDomDocument();
    QDomElement node = m_document.createElement(QStringLiteral("node"));
    m_document.appendChild(node);
    writeChain(node, m_document, module);
    m_view->removeModule(module);
    documentModified = true;
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
