#include "proj/blockpanel.h"

#include "modules/catalogue/dragpayload.h"
#include "proj/closedhand.h"
#include "proj/controls/hoverlight.h"
#include "proj/controls/picturecache.h"
#include "proj/controls/stylesheets.h"
#include "proj/hop.h"

#include <QApplication>
#include <QCursor>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

BlockPanel::BlockPanel(int p_category, QWidget* p_parent)
    : PanelBase(p_parent), m_category(p_category)
{
    m_scale = 0.6;
    setStyleSheet(toolTipStyleSheet());
    for (const BlockRecord& record : blockRecords()) {
        if (record.category != m_category) {
            continue;
        }
        auto* label = new QLabel(this);
        label->setAttribute(Qt::WA_DeleteOnClose);
        label->setToolTip(record.caption);
        label->setCursor(Qt::OpenHandCursor);
        new HoverLight(label);
        label->show();
        m_records.insert(label, record);
        m_labels.append(label);
    }
}

void BlockPanel::setPanelHeight(int p_height)
{
    if (p_height == m_laidOutHeight) {
        return;
    }
    m_laidOutHeight = p_height;
    int x = 0;
    for (QLabel* label : qAsConst(m_labels)) {
        endHop(*label);
        const QPixmap image = picture(m_records.value(label).image);
        const int height = static_cast<int>(m_scale * p_height);
        // A picture that could not be loaded has no shape to keep.
        const int width = image.isNull() ? 0 : image.width() * height / image.height();
        const int y = static_cast<int>((p_height - height) * 0.5);
        const qreal ratio = devicePixelRatioF();
        QPixmap scaled = pictureFor(image, ratio)
                             .scaled(ratio * QSize(width, height), Qt::KeepAspectRatio,
                                     Qt::SmoothTransformation);
        scaled.setDevicePixelRatio(ratio);
        label->setGeometry(x + 6, y, width, height);
        label->setPixmap(scaled);
        x += qRound(scaled.width() / ratio) + 30;
    }
    setGeometry(0, 0, x + 5, p_height);
}

void BlockPanel::mousePressEvent(QMouseEvent* p_event)
{
    auto* pressed = qobject_cast<QLabel*>(childAt(p_event->localPos().toPoint()));
    const auto found = m_records.constFind(pressed);
    if (found == m_records.constEnd() || !found->draggable) {
        return;
    }
    const BlockRecord& record = found.value();
    const QPixmap plain = pressed->pixmap(Qt::ReturnByValue);

    auto* mime = new QMimeData;
    mime->setData(QLatin1String(blockMimeType()), blockDragData(record));
    auto* drag = new QDrag(this);
    // The panel is the source, but must not own the drag: it can be replaced before the drag ends,
    // and the platform needs the drag until then. The platform also deletes it.
    drag->setParent(nullptr);
    drag->setMimeData(mime);
    const QPixmap dragged = picture(record.pressedImage);
    drag->setPixmap(pictureFor(dragged, devicePixelRatioF()));
    drag->setHotSpot(QPoint(dragged.width() / 2, 0));
    // Where it can't be dropped, too: a drag begins there.
    const QPixmap hand = closedHand();
    for (const Qt::DropAction action : {Qt::CopyAction, Qt::MoveAction, Qt::IgnoreAction}) {
        drag->setDragCursor(hand, action);
    }

    QPixmap dimmed = plain;
    if (!dimmed.isNull()) {
        QPainter painter(&dimmed);
        painter.fillRect(dimmed.rect(), QColor(127, 127, 127, 127));
    }
    pressed->setPixmap(dimmed);

    const QPointer<BlockPanel> self(this);
    const QPoint pressedAt = QCursor::pos();
    runDrag(*drag);
    if (!self) {
        return;
    }
    emit updateViewSignal();
    pressed->show();
    pressed->setPixmap(plain);
    if ((QCursor::pos() - pressedAt).manhattanLength() < QApplication::startDragDistance()) {
        // Somebody has clicked on it, and nothing would happen.
        hop(*pressed);
    }
}

void BlockPanel::runDrag(QDrag& p_drag)
{
    p_drag.exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}
