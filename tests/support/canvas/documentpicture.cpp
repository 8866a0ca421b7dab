#include "support/canvas/documentpicture.h"

#include "base/recentfiles.h"
#include "canvas/tzprogramview.h"
#include "document/programslots.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "project/projectdocument.h"

#include <QFile>

QStringList documentPicture(const TzProgramView& p_view)
{
    QList<supermodule*> roots = rootBlocks(*p_view.scene());
    roots.removeOne(p_view.preview());
    QStringList lines = QString::fromUtf8(projectText(roots, nullptr)).split(QLatin1Char('\n'));
    const auto address = [](const void* p_object) {
        return QString::number(reinterpret_cast<quintptr>(p_object), 16);
    };
    for (auto it = moduleMap.constBegin(); it != moduleMap.constEnd(); ++it) {
        lines << QStringLiteral("key %1: %2").arg(it.key()).arg(address(it.value()));
    }
    for (const supermodule* root : roots) {
        lines << QStringLiteral("root %1 in sight %2")
                     .arg(address(root))
                     .arg(root->isVisible() ? 1 : 0);
    }
    const QUndoStack& history = const_cast<TzProgramView&>(p_view).undoStack();
    lines << QStringLiteral("history %1 of %2").arg(history.index()).arg(history.count())
          << QStringLiteral("next key %1").arg(nextModuleKey)
          << QStringLiteral("slots %1 tasks %2").arg(rootModules.size()).arg(taskModules.size())
          << QStringLiteral("focus %1").arg(address(focusModule.data()))
          << QStringLiteral("modified %1").arg(documentModified ? 1 : 0)
          << QStringLiteral("window %1 %2")
                 .arg(p_view.window()->windowTitle())
                 .arg(p_view.window()->isWindowModified() ? 1 : 0)
          << QStringLiteral("recent ") + recentFiles.join(QLatin1Char(';'));
    return lines;
}

bool writeWhole(const QString& p_path, const QByteArray& p_content)
{
    QFile file(p_path);
    return file.open(QIODevice::WriteOnly) && file.write(p_content) == p_content.size();
}

QByteArray readWhole(const QString& p_path)
{
    QFile file(p_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}
