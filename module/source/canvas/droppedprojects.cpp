#include "canvas/droppedprojects.h"

#include <QMimeData>
#include <QUrl>

QStringList droppedProjects(const QMimeData& p_data)
{
    QStringList paths;
    const QList<QUrl> urls = p_data.urls();
    for (const QUrl& url : urls) {
        if (!url.fileName().endsWith(QLatin1String(".tlrx"))) {
            break;
        }
        paths.append(url.toLocalFile());
    }
    return paths;
}
