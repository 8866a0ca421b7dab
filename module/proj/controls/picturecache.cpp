#include "proj/controls/picturecache.h"

#include <QCache>
#include <QGuiApplication>
#include <QHash>
#include <QIcon>
#include <QPainter>
#include <QStyle>
#include <QtMath>

namespace
{
/** Bytes of scaled pictures that are kept: all blocks at several scales. */
const int s_scaledBytes = 32 * 1024 * 1024;
/** How many pixels a unit takes in the second file of a picture. */
const int s_fine = 2;

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

/** As many pictures on a fine screen as on any other. */
int scaledBytes()
{
    const qreal ratio = qApp->devicePixelRatio();
    return static_cast<int>(s_scaledBytes * ratio * ratio);
}

/** What a picture is made from. */
struct Source {
    QString path;
    int variant = 0;
    ChangePicture change = nullptr;

    QPixmap load(int p_fine) const
    {
        QString file = path;
        if (p_fine > 1) {
            file.insert(file.lastIndexOf(QLatin1Char('.')), QStringLiteral("@2x"));
        }
        QPixmap loaded(file);
        // Else a fine one would be drawn in half of its size.
        loaded.setDevicePixelRatio(1);
        if (variant == 0 || loaded.isNull()) {
            return loaded;
        }
        QImage image = loaded.toImage();
        change(image, p_fine, variant);
        return QPixmap::fromImage(image);
    }
};

/** Pixmaps, which must not outlive the application object. */
struct Pictures {
    QHash<QPair<QString, int>, QPixmap> loaded;
    QHash<qint64, Source> sources;
    QCache<ScaledKey, QPixmap> scaled{scaledBytes()};
};

Pictures& pictures()
{
    static Pictures s_pictures;
    static bool s_cleanedUp = false;
    if (!s_cleanedUp) {
        s_cleanedUp = true;
        qAddPostRoutine([] {
            s_pictures.loaded.clear();
            s_pictures.sources.clear();
            s_pictures.scaled.clear();
        });
    }
    return s_pictures;
}

/** Keeps a picture for a scale, unless it is too large for that. */
QPixmap kept(const ScaledKey& p_key, const QPixmap& p_made)
{
    pictures().scaled.insert(p_key, new QPixmap(p_made), p_made.width() * p_made.height() * 4);
    return p_made;
}

/** A picture's second file, in its own pixels; the picture itself where there is none. */
QPixmap finePicture(const QPixmap& p_picture)
{
    const ScaledKey key{p_picture.cacheKey(), s_fine};
    if (const QPixmap* found = pictures().scaled.object(key)) {
        return *found;
    }
    const Source source = pictures().sources.value(p_picture.cacheKey());
    if (source.path.isEmpty()) {
        return p_picture;
    }
    const QPixmap fine = source.load(s_fine);
    return fine.size() == s_fine * p_picture.size() ? kept(key, fine) : p_picture;
}

/** The picture in a size, which the scale belongs to. */
QPixmap scaledPicture(const QPixmap& p_picture, double p_scale)
{
    const ScaledKey key{p_picture.cacheKey(), p_scale};
    if (const QPixmap* found = pictures().scaled.object(key)) {
        return *found;
    }
    const QSize size = (QSizeF(p_picture.size()) * p_scale).toSize();
    const QPixmap source = p_scale > 1 ? finePicture(p_picture) : p_picture;
    return kept(key, source.scaled(size.expandedTo(QSize(1, 1)), Qt::IgnoreAspectRatio,
                                   Qt::SmoothTransformation));
}
} // namespace

QPixmap picture(const QString& p_path) { return pictureVariant(p_path, 0, nullptr); }

QPixmap pictureVariant(const QString& p_path, int p_variant, ChangePicture p_change)
{
    if (p_path.isEmpty()) {
        return QPixmap();
    }
    const QPair<QString, int> key(p_path, p_variant);
    auto it = pictures().loaded.constFind(key);
    if (it == pictures().loaded.constEnd()) {
        const Source source{p_path, p_variant, p_change};
        it = pictures().loaded.insert(key, source.load(1));
        pictures().sources.insert(it.value().cacheKey(), source);
    }
    return it.value();
}

qreal scaleOf(const QPainter& p_painter)
{
    const QTransform& to = p_painter.deviceTransform();
    return qMax(qSqrt(to.m11() * to.m11() + to.m12() * to.m12()),
                qSqrt(to.m21() * to.m21() + to.m22() * to.m22()));
}

QPixmap pictureFor(const QPixmap& p_picture, qreal p_scale)
{
    if (p_scale <= 1 || p_picture.isNull()) {
        return p_picture;
    }
    QPixmap fine = finePicture(p_picture);
    fine.setDevicePixelRatio(qreal(fine.width()) / p_picture.width());
    return fine;
}

QIcon pictureIcon(const QString& p_path, const QSize& p_size)
{
    const QPixmap plain = picture(p_path);
    const qreal ratio = qApp->devicePixelRatio();
    if (ratio <= 1 || plain.isNull()) {
        return QIcon(plain);
    }
    // Qt enlarges what is smaller than the size in pixels.
    QPixmap whole(p_size * ratio);
    whole.setDevicePixelRatio(ratio);
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawPicture(&painter, iconRect(QRect(QPoint(0, 0), p_size), p_size, plain), plain);
    return QIcon(whole);
}

QRect iconRect(const QRect& p_area, const QSize& p_size, const QPixmap& p_picture)
{
    const QSize fitting = p_picture.size().scaled(p_size, Qt::KeepAspectRatio);
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter,
                               p_picture.size().boundedTo(fitting), p_area);
}

void drawPicturePart(QPainter* p_painter, const QRect& p_target, const QPixmap& p_picture,
                     const QRect& p_source)
{
    const QPixmap shown = scaleOf(*p_painter) > 1 ? finePicture(p_picture) : p_picture;
    const int fine = shown.width() / qMax(1, p_picture.width());
    p_painter->drawPixmap(p_target, shown,
                          QRect(fine * p_source.topLeft(), fine * p_source.size()));
}

void drawPicture(QPainter* p_painter, const QRect& p_target, const QPixmap& p_picture)
{
    drawPicturePart(p_painter, p_target, p_picture, p_picture.rect());
}

void drawPicture(QPainter* p_painter, int p_x, int p_y, const QPixmap& p_picture)
{
    const QTransform to = p_painter->deviceTransform();
    const bool scales = to.type() == QTransform::TxScale && to.m11() > 0 &&
                        qFuzzyCompare(to.m11(), to.m22()) && !p_painter->viewTransformEnabled();
    if (!scales || p_picture.isNull()) {
        p_painter->drawPixmap(p_x, p_y, p_picture);
        return;
    }
    drawInPixels(p_painter, to.map(QPoint(p_x, p_y)), scaledPicture(p_picture, to.m11()));
}

void drawInPixels(QPainter* p_painter, const QPoint& p_at, const QPixmap& p_pixmap)
{
    const QTransform before = p_painter->worldTransform();
    // What is left then, the ratio of pixels and where a painter is redirected to.
    p_painter->setWorldTransform(QTransform());
    p_painter->setWorldTransform(p_painter->deviceTransform().inverted());
    p_painter->drawPixmap(p_at, p_pixmap);
    p_painter->setWorldTransform(before);
}
