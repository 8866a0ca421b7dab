#include "document/deletecommand.h"

#include "document/document.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"

namespace moduleUndoCommand
{
deleteCommand::deleteCommand(Document& p_document, supermodule* p_module,
                             const ModulePlace& p_place)
    : m_document(p_document), m_key(p_module->registryKey()), m_place(p_place)
{
}

void deleteCommand::redo()
{
    m_document.prepareChange();
    supermodule* module = moduleMap.value(m_key);
    if (!module) {
        return;
    }
    if (m_done) {
        m_place = ModulePlace::of(module);
    }
    m_done = true;
    // Recorded at each redo: drops and moves in between aren't on the undo stack. The chain and the
    // bodies are deleted with the block, so all of them are recorded.
    m_record = TreeRecord(module);
    m_document.removeModule(module);
    m_document.setModified(true);
}

bool deleteCommand::hangAgain(supermodule* p_module) const
{
    supermodule* parent =
        m_place.parentKey == 0 ? m_document.mainBlock() : moduleMap.value(m_place.parentKey);
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
    m_document.prepareChange();
    if (moduleMap.contains(m_key)) {
        return;
    }
    supermodule* module = m_record.rebuild(&m_document.scene());
    if (!module) {
        return;
    }
    module->setPos(m_place.position);
    // Behind a loop a block touches the end of the loop's body as well, and a loose one may lie on
    // a connector.
    if (m_place.link != NoLink && !hangAgain(module)) {
        supermodule* target = nullptr;
        int type = NoLink;
        module->CollisionDetection(target, type);
    }
    module->updateTreeAndOpacity();
    m_document.setModified(true);
    m_document.noteContent();
}
} // namespace moduleUndoCommand
