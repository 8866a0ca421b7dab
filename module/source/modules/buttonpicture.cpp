#include "modules/buttonpicture.h"

#include "modules/buttonspec.h"
#include "proj/controls/picturecache.h"

#include <QApplication>
#include <QCache>
#include <QHash>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QtMath>

#include <algorithm>
#include <iterator>
#include <memory>
#include <tuple>

namespace
{
/** Limit of the picture cache in bytes. */
const int s_cacheBytes = 8 * 1024 * 1024;
/**
 * Pictures are rendered at subpixel offsets of a quarter; finer ones make no visible difference.
 */
const int s_phases = 4;

/** The part of a spec that its picture depends on, without the text. */
struct Face {
    const char* normalPicture;
    const char* property;
    QSize size;
    bool arrow;
    bool whiteText;
    bool field;

    explicit Face(const ButtonSpec& p_spec)
        : normalPicture(p_spec.look.normalPicture),
          property(p_spec.look.property),
          size(p_spec.geometry.size()),
          arrow(p_spec.look.arrow),
          whiteText(p_spec.look.whiteText),
          field(p_spec.keys != 0)
    {
    }
    auto tied() const
    {
        return std::make_tuple(normalPicture, property, size.width(), size.height(), arrow,
                               whiteText, field);
    }
    bool operator==(const Face& p_other) const { return tied() == p_other.tied(); }
};

uint qHash(const Face& p_face, uint p_seed = 0)
{
    // Few faces share both, so collisions are rare.
    return ::qHash(p_face.normalPicture, p_seed) + static_cast<uint>(p_face.size.width());
}

struct PictureKey {
    Face face;
    QString text;
    qreal scale;
    QPoint phase;
    bool smooth;

    bool operator==(const PictureKey& p_other) const
    {
        return face == p_other.face && text == p_other.text && scale == p_other.scale &&
               phase == p_other.phase && smooth == p_other.smooth;
    }
};

uint qHash(const PictureKey& p_key, uint p_seed = 0)
{
    return qHash(p_key.face, p_seed) ^ ::qHash(p_key.text, p_seed) ^ ::qHash(p_key.scale, p_seed) ^
           static_cast<uint>(p_key.phase.x() * s_phases + p_key.phase.y());
}

/**
 * True if drawing the picture gives the same pixels as rendering its widget, on any background.
 * Where a widget paints over its own translucent edges, the way through a pixmap rounds once more.
 */
bool isTrueTo(const QPixmap& p_picture, QPushButton& p_widget)
{
    const auto on = [&](QRgb p_ground, bool p_asPicture) {
        QImage image(p_picture.size(), QImage::Format_RGB32);
        image.fill(p_ground);
        QPainter painter(&image);
        if (p_asPicture) {
            painter.drawPixmap(0, 0, p_picture);
        } else {
            p_widget.render(&painter);
        }
        return image;
    };
    const auto same = [&](QRgb p_ground) { return on(p_ground, true) == on(p_ground, false); };
    const QRgb grounds[] = {0x000000, 0xffffff, 0x808080, 0xf94141, 0x37c06a, 0x1b5fe3};
    return std::all_of(std::begin(grounds), std::end(grounds), same);
}

/** The cache of button pictures, with a widget for each face to render them from. */
class ButtonPictures
{
public:
    ButtonPictures() : m_pictures(s_cacheBytes) {}

    /** Null where no pixmap can stand for the widget, which is rendered directly then. */
    QPixmap picture(const ButtonSpec& p_spec, const PictureKey& p_key)
    {
        if (const QPixmap* kept = m_pictures.object(p_key)) {
            return *kept;
        }
        QPushButton& shown = widget(p_spec);
        QPixmap made = paint(shown, p_key);
        const int bytes = made.width() * made.height() * 4;
        // At any other scale the difference isn't visible.
        if (p_key.scale == 1 && !isTrueTo(made, shown)) {
            made = QPixmap();
        }
        m_pictures.insert(p_key, new QPixmap(made), bytes);
        return made;
    }

    /** The widget of a spec's face, showing the spec's text. */
    QPushButton& widget(const ButtonSpec& p_spec)
    {
        std::shared_ptr<QPushButton>& kept = m_widgets[Face(p_spec)];
        if (!kept) {
            kept = makeButton(p_spec);
        }
        kept->setText(p_spec.text);
        return *kept;
    }

    /** Empties the cache when the application's font, palette or style has changed. */
    void keepUp()
    {
        const QFont font = QApplication::font();
        const qint64 colours = QApplication::palette().cacheKey();
        if (font != m_font || colours != m_colours || m_style != QApplication::style() ||
            m_sheet != qApp->styleSheet()) {
            clear();
            m_font = font;
            m_colours = colours;
            m_style = QApplication::style();
            m_sheet = qApp->styleSheet();
        }
    }

    void clear()
    {
        m_pictures.clear();
        m_widgets.clear();
    }

private:
    static QPixmap paint(QPushButton& p_widget, const PictureKey& p_key)
    {
        const QPointF phase = QPointF(p_key.phase) / s_phases;
        const QSizeF size = QSizeF(p_key.face.size) * p_key.scale;
        QPixmap pixmap(qCeil(size.width() + phase.x()), qCeil(size.height() + phase.y()));
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, p_key.smooth);
        painter.translate(phase);
        painter.scale(p_key.scale, p_key.scale);
        p_widget.render(&painter);
        return pixmap;
    }

    QCache<PictureKey, QPixmap> m_pictures;
    QHash<Face, std::shared_ptr<QPushButton>> m_widgets;
    QFont m_font;
    qint64 m_colours = 0;
    const QStyle* m_style = nullptr;
    QString m_sheet;
};

ButtonPictures& pictures()
{
    static ButtonPictures s_pictures;
    return s_pictures;
}

/** Neither widgets nor pixmaps must outlive the application object. */
void clearPictures() { pictures().clear(); }
} // namespace

void paintButton(QPainter* p_painter, const ButtonSpec& p_spec)
{
    static bool s_cleanedUp = false;
    if (!s_cleanedUp) {
        qAddPostRoutine(clearPictures);
        s_cleanedUp = true;
    }
    pictures().keepUp();
    const QTransform to = p_painter->deviceTransform();
    const bool upright = to.type() <= QTransform::TxScale && to.m11() > 0 &&
                         qFuzzyCompare(to.m11(), to.m22()) && !p_painter->viewTransformEnabled();
    if (!upright) {
        pictures().widget(p_spec).render(p_painter);
        return;
    }
    const int left = qRound(to.dx() * s_phases);
    const int top = qRound(to.dy() * s_phases);
    const QPoint corner(qFloor(left / qreal(s_phases)), qFloor(top / qreal(s_phases)));
    const QPoint phase(left - corner.x() * s_phases, top - corner.y() * s_phases);
    const bool smooth = p_painter->testRenderHint(QPainter::SmoothPixmapTransform);
    const QPixmap shown =
        pictures().picture(p_spec, {Face(p_spec), p_spec.text, to.m11(), phase, smooth});
    if (shown.isNull()) {
        pictures().widget(p_spec).render(p_painter);
        return;
    }
    // The pixmap is rendered at the device's scale: draw it in device pixels, without scaling.
    drawInPixels(p_painter, corner, shown);
}
