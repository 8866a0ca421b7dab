#include "document/pastecommand.h"

#include "document/document.h"
#include "modules/documentstate.h"
#include "modules/moduleregistry.h"
#include "modules/moduletree.h"
#include "modules/supermodule.h"
#include "project/projectdocument.h"
#include "project/projectreader.h"

#include <QSet>

namespace
{
/** Unlinks blocks that were linked under pasted ones since: they stay on the canvas, loose. */
void letGoOfOthers(supermodule* p_head, const QVector<int>& p_pasted)
{
    const QSet<int> pasted(p_pasted.cbegin(), p_pasted.cend());
    QVector<supermodule*> others;
    forEachModule(p_head, [&](supermodule* p_each) {
        const supermodule* parent = p_each->parentModule();
        if (p_each != p_head && !pasted.contains(p_each->registryKey()) &&
            pasted.contains(parent->registryKey())) {
            others.append(p_each);
        }
    });
    for (supermodule* other : qAsConst(others)) {
        other->detachFromParent();
        other->updateTreeAndOpacity();
    }
}
} // namespace

namespace moduleUndoCommand
{
pasteCommand::pasteCommand(Document& p_document, const QString& p_text, int p_x, int p_y)
    : m_document(p_document), m_text(p_text), m_x(p_x), m_y(p_y)
{
}

void pasteCommand::redo()
{
    m_document.prepareChange();
    m_document.setModified(true);
    QVector<QVector<int>> keysBefore;
    keysBefore.swap(m_keys);
    QDomDocument document;
    if (!parseProject(m_text, document)) {
        return;
    }
    const QString baseNode = QStringLiteral("basenode");
    for (QDomElement base = document.documentElement().firstChildElement(baseNode); !base.isNull();
         base = base.nextSiblingElement(baseNode)) {
        supermodule* head =
            buildChain(base.firstChildElement(QStringLiteral("module")), &m_document.scene());
        if (!head) {
            continue;
        }
        // A second redo restores the keys: later commands on the stack refer to them.
        if (!keysBefore.isEmpty()) {
            ModuleRegistry::restoreKeys(head, keysBefore.takeFirst());
        }
        m_keys.append(ModuleRegistry::keysUnder(head));
        head->setPos(m_x, m_y);
        head->updateLayout();
        head->refreshOpacity();
    }
}

void pasteCommand::undo()
{
    m_document.prepareChange();
    m_document.setModified(true);
    for (const QVector<int>& keys : qAsConst(m_keys)) {
        supermodule* head = moduleMap.value(keys.first());
        letGoOfOthers(head, keys);
        m_document.removeModule(head);
    }
}
} // namespace moduleUndoCommand
