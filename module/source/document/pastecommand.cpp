#include "document/pastecommand.h"

#include "document/document.h"
#include "modules/documentstate.h"
#include "modules/moduleregistry.h"
#include "modules/supermodule.h"
#include "project/projectdocument.h"

#include <QSet>

namespace moduleUndoCommand
{
pasteCommand::pasteCommand(Document& p_document, const QDomDocument& p_chains, int p_x, int p_y)
    : m_document(p_document), m_chains(p_chains), m_x(p_x), m_y(p_y)
{
}

void pasteCommand::redo()
{
    m_document.prepareChange();
    m_document.setModified(true);
    // One tree may have hung on another.
    while (!m_taken.isEmpty()) {
        m_taken.takeLast().putBack(m_document);
    }
    const QString baseNode = QStringLiteral("basenode");
    for (QDomElement base = m_chains.documentElement().firstChildElement(baseNode); !base.isNull();
         base = base.nextSiblingElement(baseNode)) {
        supermodule* head =
            buildChain(base.firstChildElement(QStringLiteral("module")), &m_document.scene());
        if (!head) {
            continue;
        }
        m_keys += ModuleRegistry::keysUnder(head);
        head->setPos(m_x, m_y);
        head->updateLayout();
        head->refreshOpacity();
    }
    m_chains.clear();
}

void pasteCommand::undo()
{
    m_document.prepareChange();
    m_document.setModified(true);
    const QSet<int> pasted(m_keys.cbegin(), m_keys.cend());
    const auto isPasted = [&pasted](int p_key) { return pasted.contains(p_key); };
    for (const int key : qAsConst(m_keys)) {
        supermodule* module = moduleMap.value(key);
        // Those with a pasted parent are taken along with that.
        if (module &&
            !(module->parentModule() && isPasted(module->parentModule()->registryKey()))) {
            m_taken.append(TakenTree(m_document, module, isPasted));
        }
    }
}
} // namespace moduleUndoCommand
