#include "base/recentfiles.h"
#include "canvas/programslots.h"
#include "canvas/tzprogramscene.h"
#include "canvas/tzprogramview.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "project/programnameholder.h"
#include "project/projectdocument.h"
#include "project/projectfile.h"

#include <QMessageBox>

QList<supermodule*> TzProgramView::storedRoots() const
{
    QList<supermodule*> roots = rootBlocks(*m_scene);
    roots.removeOne(m_feedback);
    return roots;
}

bool TzProgramView::saveFile(const QString& p_path, const QByteArray& p_tail)
{
    finishDrag();
    if (!writeProject(p_path, projectText(storedRoots(), m_nameHolder), p_tail)) {
        return false;
    }
    putRecentFileFirst(p_path);
    emit updateRecentMenuSignal();
    return true;
}

bool TzProgramView::saveTempFile(const QString& p_path, const QByteArray& p_tail)
{
    finishDrag();
    return writeProject(p_path, temporaryProjectText(storedRoots(), m_nameHolder), p_tail);
}

int TzProgramView::openFile(const QString& p_path, QByteArray* p_actions)
{
    ProjectContent content;
    const int result = readProject(p_path, content);
    if (result == ProjectMissing) {
        askForMissing(p_path);
    }
    if (result != ProjectOpened) {
        return result;
    }
    if (p_actions) {
        *p_actions = content.actions;
    }
    newProgram();
    resetDocument();
    const QDomElement root = content.document.documentElement();
    if (m_nameHolder) {
        m_nameHolder->setProgramName(root.attribute(QStringLiteral("downname"), QString()));
    }
    const QString baseNode = QStringLiteral("basenode");
    for (QDomElement base = root.firstChildElement(baseNode); !base.isNull();
         base = base.nextSiblingElement(baseNode)) {
        supermodule* head = buildChain(base.firstChildElement(QStringLiteral("module")), m_scene);
        if (!head) {
            continue;
        }
        if (head->id == m_mainModule->id) {
            // The stored main block: what it says goes to the real one.
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
    OnSwitchProgram(m_mainModule->id);
    QString path = p_path;
    putRecentFileFirst(path.replace(QLatin1Char('\\'), QLatin1Char('/')));
    emit updateRecentMenuSignal();
    return ProjectOpened;
}

void TzProgramView::askForMissing(const QString& p_path)
{
    const int answer = QMessageBox::question(this, tr("提示"), tr("文件不存在，是否在列表中删除？"),
                                             tr("是"), tr("否"));
    if (answer == 0) {
        recentFiles.removeAll(p_path);
        emit updateRecentMenuSignal();
    }
}

void TzProgramView::newProgram()
{
    hideFeedback();
    m_pressed = false;
    m_current.clear();
    m_copied.clear();
    m_linkCandidates.clear();
    if (graphicsItem_Param* popUp = graphicsItem_Param::existing()) {
        popUp->setVisible(false);
    }
    // The chain of the main block lets go of it first: its blocks die in the next line.
    if (supermodule* behind = m_mainModule->next()) {
        m_mainModule->removeChild(behind);
    }
    m_scene->clearItems({m_mainModule, m_feedback});
}

void TzProgramView::resetDocument()
{
    rootModules = {m_mainModule};
    taskModules = {m_mainModule};
    m_undoStack.clear();
    ModuleRegistry::clear();
    update();
}
