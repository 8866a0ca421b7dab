#include "proj/controls/picturecache.h"

#include <QCache>
#include <QCoreApplication>
#include <QHash>
#include <QPaintDevice>
#include <QPainter>

namespace
{
/** Bytes of scaled pictures that are kept: all blocks at several scales. */
const int s_scaledBytes = 32 * 1024 * 1024;

struct ScaledKey {
    qint64 picture;
    double scale;

    bool operator==(const ScaledKey& p_other) const
    {
        return picture == p_other.picture && scale == p_other.scale;
    }
};

uint qHash(const ScaledKey& p_key, uint p_seed = 0)
{
    return ::qHash(p_key.picture, p_seed) ^ ::qHash(p_key.scale, p_seed);
}

/** Pixmaps, which must not outlive the application object. */
struct Pictures {
    QHash<QString, QPixmap> loaded;
    QCache<ScaledKey, QPixmap> scaled{s_scaledBytes};
};

Pictures& pictures()
{
    static Pictures s_pictures;
    static bool s_cleanedUp = false;
    if (!s_cleanedUp) {
        s_cleanedUp = true;
        qAddPostRoutine([] {
            s_pictures.loaded.clear();
            s_pictures.scaled.clear();
        });
    }
    return s_pictures;
}

/** The picture in a size, which the scale belongs to. */
QPixmap scaledPicture(const QPixmap& p_picture, double p_scale)
{
    const ScaledKey key{p_picture.cacheKey(), p_scale};
    if (const QPixmap* kept = pictures().scaled.object(key)) {
        return *kept;
    }
    const QSize size = (QSizeF(p_picture.size()) * p_scale).toSize();
    QPixmap made = p_picture.scaled(size.expandedTo(QSize(1, 1)), Qt::IgnoreAspectRatio,
                                    Qt::SmoothTransformation);
    pictures().scaled.insert(key, new QPixmap(made), made.width() * made.height() * 4);
    return made;
}
} // namespace

QPixmap picture(const QString& p_path)
{
    if (p_path.isEmpty()) {
        return QPixmap();
    }
    auto it = pictures().loaded.constFind(p_path);
    if (it == pictures().loaded.constEnd()) {
        it = pictures().loaded.insert(p_path, QPixmap(p_path));
    }
    return it.value();
}

void drawPicture(QPainter* p_painter, int p_x, int p_y, const QPixmap& p_picture)
{
    const QTransform to = p_painter->combinedTransform();
    const bool scales = to.type() == QTransform::TxScale && to.m11() > 0 &&
                        qFuzzyCompare(to.m11(), to.m22()) && !p_painter->viewTransformEnabled();
    if (!scales || p_picture.isNull()) {
        p_painter->drawPixmap(p_x, p_y, p_picture);
        return;
    }
    const qreal pixel = 1 / p_painter->device()->devicePixelRatioF();
    const QTransform before = p_painter->worldTransform();
    p_painter->setWorldTransform(QTransform::fromScale(pixel, pixel));
    p_painter->drawPixmap(to.map(QPoint(p_x, p_y)), scaledPicture(p_picture, to.m11()));
    p_painter->setWorldTransform(before);
}
