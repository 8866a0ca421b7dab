#include "document/programslots.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{
const char* const s_names[] = {
    QT_TRANSLATE_NOOP("QObject", "子程序一"),     QT_TRANSLATE_NOOP("QObject", "子程序二"),
    QT_TRANSLATE_NOOP("QObject", "子程序三"),     QT_TRANSLATE_NOOP("QObject", "子程序四"),
    QT_TRANSLATE_NOOP("QObject", "子程序五"),     QT_TRANSLATE_NOOP("QObject", "子程序六"),
    QT_TRANSLATE_NOOP("QObject", "子程序七"),     QT_TRANSLATE_NOOP("QObject", "子程序八"),
    QT_TRANSLATE_NOOP("QObject", "子程序九"),     QT_TRANSLATE_NOOP("QObject", "子程序十"),
    QT_TRANSLATE_NOOP("QObject", "子程序十一"),   QT_TRANSLATE_NOOP("QObject", "子程序十二"),
    QT_TRANSLATE_NOOP("QObject", "子程序十三"),   QT_TRANSLATE_NOOP("QObject", "子程序十四"),
    QT_TRANSLATE_NOOP("QObject", "子程序十五"),   QT_TRANSLATE_NOOP("QObject", "子程序十六"),
    QT_TRANSLATE_NOOP("QObject", "子程序十七"),   QT_TRANSLATE_NOOP("QObject", "子程序十八"),
    QT_TRANSLATE_NOOP("QObject", "子程序十九"),   QT_TRANSLATE_NOOP("QObject", "子程序二十"),
    QT_TRANSLATE_NOOP("QObject", "子程序二十一"), QT_TRANSLATE_NOOP("QObject", "子程序二十二"),
    QT_TRANSLATE_NOOP("QObject", "子程序二十三"), QT_TRANSLATE_NOOP("QObject", "子程序二十四"),
    QT_TRANSLATE_NOOP("QObject", "子程序二十五"), QT_TRANSLATE_NOOP("QObject", "子程序二十六"),
    QT_TRANSLATE_NOOP("QObject", "子程序二十七"), QT_TRANSLATE_NOOP("QObject", "子程序二十八"),
    QT_TRANSLATE_NOOP("QObject", "子程序二十九"), QT_TRANSLATE_NOOP("QObject", "子程序三十"),
};
const int s_count = sizeof(s_names) / sizeof(s_names[0]);
} // namespace

QVector<QPair<modulesId, QString>>& subProgramNames()
{
    static QVector<QPair<modulesId, QString>> s_list = [] {
        QVector<QPair<modulesId, QString>> list;
        for (int i = 0; i < s_count; ++i) {
            const modulesId id = FirstSubProgramId + i;
            list.append(qMakePair(id, defaultSubProgramName(id)));
        }
        return list;
    }();
    return s_list;
}

QString defaultSubProgramName(modulesId p_id)
{
    const int index = p_id - FirstSubProgramId;
    return 0 <= index && index < s_count ? QCoreApplication::translate("QObject", s_names[index])
                                         : QString();
}

modulesId slotOf(const supermodule* p_module)
{
    const bool isRoot = rootModules.contains(const_cast<supermodule*>(p_module));
    return isRoot ? p_module->id : p_module->ownid;
}

QList<supermodule*> rootBlocks(const QGraphicsScene& p_scene)
{
    QList<supermodule*> roots;
    for (supermodule* module : qAsConst(liveModules)) {
        if (module->scene() == &p_scene && !module->parentModule() && !module->isPreview()) {
            roots.append(module);
        }
    }
    // As they are stacked; of equals the newest first. The scene's own order depends on addresses.
    std::stable_sort(
        roots.begin(), roots.end(), [](const supermodule* p_a, const supermodule* p_b) {
            return p_a->zValue() != p_b->zValue() ? p_a->zValue() > p_b->zValue()
                                                  : p_a->registryKey() > p_b->registryKey();
        });
    return roots;
}

void showProgramSlot(const QGraphicsScene& p_scene, modulesId p_id)
{
    // A chain belongs to one slot, so asking its root is enough.
    const QList<supermodule*> roots = rootBlocks(p_scene);
    for (supermodule* root : roots) {
        root->setVisibleTree(slotOf(root) == p_id);
    }
    for (supermodule* root : qAsConst(taskModules)) {
        root->setVisibleTree(p_id == 0);
    }
}
