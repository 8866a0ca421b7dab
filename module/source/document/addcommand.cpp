#include "document/addcommand.h"

#include "document/document.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/moduleregistry.h"
#include "modules/supermodule.h"

namespace moduleUndoCommand
{
addCommand::addCommand(Document& p_document, int p_x, int p_y, int p_id, int p_key)
    : m_document(p_document), m_x(p_x), m_y(p_y), m_id(p_id), m_key(p_key)
{
}

void addCommand::redo()
{
    m_document.prepareChange();
    if (m_added) {
        m_taken.putBack(m_document);
        return;
    }
    m_added = true;
    supermodule* module = createModuleFromId(m_id);
    if (!module) {
        return;
    }
    module->enterScene(&m_document.scene());
    module->setPos(m_x - module->boundingRect().width() / 2, m_y);
    supermodule* target = nullptr;
    int type = NoLink;
    module->CollisionDetection(target, type);
    module->updateTreeAndOpacity();
    if (const supermodule* root = firstVisibleRoot()) {
        module->ownid = root->id;
    }
    module->refreshOpacity();
    module->moduleKey = m_key;
    ModuleRegistry::addAs(m_key, module);
}

void addCommand::undo()
{
    m_document.prepareChange();
    supermodule* module = moduleMap.value(m_key);
    m_taken = module ? TakenTree(m_document, module, [this](int p_key) { return p_key == m_key; })
                     : TakenTree();
}
} // namespace moduleUndoCommand
