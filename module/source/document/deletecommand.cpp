#include "document/deletecommand.h"

#include "document/document.h"
#include "modules/documentstate.h"
#include "modules/supermodule.h"

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
        // It has gone with another block: what that brings back must not come twice.
        m_taken = TakenTree();
        return;
    }
    // Taken anew at each redo: drops and moves in between aren't on the undo stack. The chain and
    // the bodies are deleted with the block.
    m_taken = TakenTree(m_document, module);
    if (m_place) {
        m_taken.setPlace(*m_place);
        m_place.reset();
    }
    m_document.setModified(true);
}

void deleteCommand::undo()
{
    m_document.prepareChange();
    m_taken.putBack(m_document);
    m_document.setModified(true);
}
} // namespace moduleUndoCommand
