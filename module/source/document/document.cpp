#include "document/document.h"

#include "base/recentfiles.h"
#include "document/addcommand.h"
#include "document/deletecommand.h"
#include "document/moduleplace.h"
#include "document/pastecommand.h"
#include "document/programslots.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "project/programnameholder.h"
#include "project/projectdocument.h"
#include "project/projectfile.h"
#include "project/projectreader.h"

#include <QCoreApplication>

Document::Document(QObject* p_parent) : QObject(p_parent)
{
    // A block's tab is painted outside of its bounding rectangle, the only part that adding and
    // removing an item marks dirty.
    connect(&m_undoStack, &QUndoStack::indexChanged, &m_scene, [this] { m_scene.update(); });
    const QString path = QStringLiteral(":/main.png");
    m_mainModule = new mainModule(0, path, path, QCoreApplication::translate("QObject", "主程序"));
    m_mainModule->enterScene(&m_scene);
    rootModules.append(m_mainModule);
    taskModules.append(m_mainModule);
    m_mainModule->moduleKey = ModuleRegistry::add(m_mainModule);
}

Document::~Document()
{
    m_undoStack.clear();
    // Delete the blocks here, while the members that their destructors use still exist.
    m_scene.clearItems({});
    ModuleRegistry::clear();
}

void Document::setFirstPlace(const QPointF& p_place)
{
    m_firstPlace = p_place;
    m_mainModule->setPos(p_place);
}

bool Document::isModified() const { return documentModified; }

void Document::setModified(bool p_modified) { setDocumentModified(p_modified); }

ActionImage& Document::actions()
{
    m_actionsNeeded = true;
    return m_actions;
}

bool Document::save(const QString& p_path)
{
    if (!save(p_path, m_actions.bytes())) {
        return false;
    }
    actions().setModified(false);
    setModified(false);
    return true;
}

bool Document::save(const QString& p_path, const QByteArray& p_tail)
{
    prepareChange();
    if (!writeProject(p_path, projectText(rootBlocks(m_scene), m_nameHolder), p_tail)) {
        return false;
    }
    putRecentFileFirst(p_path);
    emit changed({DocumentChange::RecentFiles});
    return true;
}

bool Document::saveTemporary(const QString& p_path, const QByteArray& p_tail)
{
    prepareChange();
    return writeProject(p_path, temporaryProjectText(rootBlocks(m_scene), m_nameHolder), p_tail);
}

int Document::open(const QString& p_path)
{
    ProjectContent content;
    const int result = readProject(p_path, content);
    if (result != ProjectOpened) {
        return result;
    }
    newProgram();
    reset();
    takeIn(content.document.documentElement());
    actions().setBytes(content.actions);
    setModified(false);
    showSlot(m_mainModule->id);
    putRecentFileFirst(p_path);
    emit changed({DocumentChange::RecentFiles});
    return ProjectOpened;
}

void Document::takeIn(const QDomElement& p_project)
{
    if (m_nameHolder) {
        m_nameHolder->setProgramName(p_project.attribute(QStringLiteral("downname"), QString()));
    }
    const QString baseNode = QStringLiteral("basenode");
    for (QDomElement base = p_project.firstChildElement(baseNode); !base.isNull();
         base = base.nextSiblingElement(baseNode)) {
        supermodule* head = buildChain(base.firstChildElement(QStringLiteral("module")), &m_scene);
        if (!head) {
            continue;
        }
        if (head->id == m_mainModule->id) {
            // A stored main block: the document's own one takes over its position and chain.
            m_mainModule->setPos(head->pos());
            if (supermodule* behind = head->next()) {
                head->removeChild(behind);
                m_mainModule->appendModule(behind);
            }
            supermodule::deleteTree(head);
        } else {
            head->updateTreeAndOpacity();
        }
    }
    m_mainModule->updateTreeAndOpacity();
}

void Document::forgetRecentFile(const QString& p_path)
{
    removeRecentFile(p_path);
    emit changed({DocumentChange::RecentFiles});
}

void Document::startAnew()
{
    newProgram();
    m_mainModule->setPos(m_firstPlace);
    reset();
    setModified(false);
    // Meant: an image that nobody has asked for is left as built, with the run time 50; a reset one
    // has 100, and saved files show which it was.
    if (m_actionsNeeded) {
        m_actions.reset();
        m_actions.setModified(false);
    }
    showSlot(m_mainModule->id);
}

void Document::newProgram()
{
    emit changed({DocumentChange::Removing});
    // Unlink the main block's chain first: its blocks are deleted in the next line.
    if (supermodule* behind = m_mainModule->next()) {
        m_mainModule->removeChild(behind);
    }
    m_scene.clearItems({m_mainModule});
}

void Document::reset()
{
    rootModules = {m_mainModule};
    taskModules = {m_mainModule};
    m_undoStack.clear();
    ModuleRegistry::clear();
    m_scene.update();
}

void Document::addModule(int p_x, int p_y, int p_id)
{
    m_undoStack.push(new moduleUndoCommand::addCommand(*this, p_x, p_y, p_id, nextModuleKey++));
    noteContent();
}

void Document::deleteModule(supermodule* p_module, const ModulePlace& p_place)
{
    if (!p_module || p_module == m_mainModule) {
        return;
    }
    m_undoStack.push(new moduleUndoCommand::deleteCommand(*this, p_module, p_place));
    focusModule.clear();
    m_scene.update();
}

void Document::paste(const QString& p_text, int p_x, int p_y)
{
    // Meant: a paste counts as a change whatever comes of it; the design says so.
    setModified(true);
    QDomDocument chains;
    // As with a file: a text larger than any project isn't read.
    if (p_text.size() <= MaximalProjectSize && parseProject(p_text, chains) &&
        holdsBlocks(chains.documentElement())) {
        m_undoStack.push(new moduleUndoCommand::pasteCommand(*this, chains, p_x, p_y));
    }
}

void Document::removeModule(supermodule* p_module)
{
    if (!p_module) {
        return;
    }
    emit changed({DocumentChange::Removing, p_module});
    if (supermodule* parent = p_module->parentModule()) {
        parent->removeChild(p_module);
        parent->updateTreeAndOpacity();
    }
    supermodule::deleteTree(p_module);
    noteContent();
}

QString Document::clipboardText(const supermodule* p_first)
{
    const StableAttributeOrder order;
    QDomDocument document(QStringLiteral("vantrel"));
    QDomElement root = document.createElement(QStringLiteral("vantrel"));
    document.appendChild(root);
    QDomElement baseNode = document.createElement(QStringLiteral("basenode"));
    root.appendChild(baseNode);
    writeChain(baseNode, document, p_first, &supermodule::saveCopyXml);
    return document.toString(1);
}

void Document::showSlot(modulesId p_id)
{
    showProgramSlot(m_scene, p_id);
    emit changed({DocumentChange::SlotShown});
}

void Document::deleteSubProgram()
{
    prepareChange();
    if (supermodule* root = firstVisibleRoot(1)) {
        const int id = root->id;
        for (auto& entry : subProgramNames()) {
            if (entry.first == id) {
                entry.second = defaultSubProgramName(id);
            }
        }
        rootModules.removeOne(root);
        supermodule::deleteTree(root);
        const QList<supermodule*> roots = rootBlocks(m_scene);
        for (supermodule* loose : roots) {
            if (loose->ownid == id && loose != m_mainModule) {
                supermodule::deleteTree(loose);
            }
        }
    }
    showSlot(m_mainModule->id);
}

void Document::setSubProgramName(int p_id, const QString& p_name)
{
    for (auto& entry : subProgramNames()) {
        if (entry.first == p_id) {
            entry.second = p_name;
            for (supermodule* module : qAsConst(liveModules)) {
                if (module->scene() == &m_scene && module->id == p_id) {
                    module->setText(p_name);
                }
            }
            break;
        }
    }
    m_scene.update();
}
