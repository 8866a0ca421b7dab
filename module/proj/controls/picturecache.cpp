#include "proj/controls/picturecache.h"

#include <QCoreApplication>
#include <QHash>

namespace
{
QHash<QString, QPixmap>& cache()
{
    static QHash<QString, QPixmap> s_cache;
    return s_cache;
}

// Pixmaps must not outlive the application object.
void clearCache() { cache().clear(); }
} // namespace

QPixmap picture(const QString& p_path)
{
    if (p_path.isEmpty()) {
        return QPixmap();
    }
    static bool s_cleanedUp = false;
    if (!s_cleanedUp) {
        qAddPostRoutine(clearCache);
        s_cleanedUp = true;
    }
    auto it = cache().constFind(p_path);
    if (it == cache().constEnd()) {
        it = cache().insert(p_path, QPixmap(p_path));
    }
    return it.value();
}
