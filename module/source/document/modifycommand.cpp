#include "document/modifycommand.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

namespace moduleUndoCommand
{
modifyCommand::modifyCommand(int p_key, const QDomElement& p_old, const QDomElement& p_new)
    : m_key(p_key)
{
    // Copies of its own: an element doesn't keep its document alive.
    m_old.appendChild(m_old.importNode(p_old, true));
    m_new.appendChild(m_new.importNode(p_new, true));
}

void modifyCommand::redo() { load(m_new); }

void modifyCommand::undo() { load(m_old); }

void modifyCommand::load(const QDomDocument& p_document)
{
    if (supermodule* module = moduleMap.value(m_key)) {
        module->loadXml(p_document.documentElement().firstChildElement());
    }
}
} // namespace moduleUndoCommand
