#include "support/canvas/canvashands.h"

#include "modules/catalogue/dragpayload.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/mainmodule.h"

#include <QApplication>
#include <QDataStream>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>

QMimeData* blockDrag(int p_id)
{
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::WriteOnly);
    stream << QStringLiteral(":/image.png") << QStringLiteral(":/pressed.png")
           << QStringLiteral("caption") << static_cast<qint32>(p_id);
    auto* data = new QMimeData;
    data->setData(QLatin1String(blockMimeType()), payload);
    return data;
}

CanvasHands::CanvasHands(TzProgramView& p_view) : m_view(p_view) {}

CanvasHands::~CanvasHands() = default;

QPoint CanvasHands::at(const QPointF& p_scenePos) const { return m_view.mapFromScene(p_scenePos); }

void CanvasHands::dragOver(int p_id, const QPointF& p_scenePos)
{
    m_drag.reset(blockDrag(p_id));
    QDragEnterEvent enter(at(p_scenePos), Qt::CopyAction | Qt::MoveAction, m_drag.get(),
                          Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &enter);
    dragOverOn(p_scenePos);
}

void CanvasHands::dragOverOn(const QPointF& p_scenePos)
{
    QDragMoveEvent move(at(p_scenePos), Qt::CopyAction | Qt::MoveAction, m_drag.get(),
                        Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &move);
}

void CanvasHands::leave()
{
    if (m_drag) {
        QDragLeaveEvent leave;
        QApplication::sendEvent(m_view.viewport(), &leave);
        m_drag.reset();
    }
}

supermodule* CanvasHands::drop(int p_id, const QPointF& p_scenePos)
{
    dragOver(p_id, p_scenePos);
    supermodule* module = m_view.currentModule();
    QDropEvent drop(at(p_scenePos), Qt::CopyAction | Qt::MoveAction, m_drag.get(), Qt::LeftButton,
                    Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &drop);
    m_drag.reset();
    return module;
}

supermodule* CanvasHands::dropBehind(supermodule* p_last, int p_id)
{
    const QRectF rect = p_last->sceneBoundingRect();
    // The hand holds the block by the middle of its top edge.
    const std::unique_ptr<supermodule> sample(createModuleFromId(p_id));
    return drop(p_id, QPointF(rect.right() + 10 + sample->boundingRect().width() / 2,
                              p_last->scenePos().y() + 10));
}

void CanvasHands::press(const QPointF& p_scenePos, Qt::MouseButton p_button)
{
    // What the hand sees it can press: blocks get their buttons when they are painted.
    m_view.viewport()->repaint();
    QTest::mousePress(m_view.viewport(), p_button, Qt::NoModifier, at(p_scenePos));
}

void CanvasHands::move(const QPointF& p_scenePos)
{
    QMouseEvent event(QEvent::MouseMove, at(p_scenePos),
                      m_view.viewport()->mapToGlobal(at(p_scenePos)), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &event);
}

void CanvasHands::release(const QPointF& p_scenePos)
{
    QTest::mouseRelease(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, at(p_scenePos));
}

void CanvasHands::click(const QPointF& p_scenePos)
{
    press(p_scenePos);
    release(p_scenePos);
}

void CanvasHands::rightClick(const QPointF& p_scenePos)
{
    press(p_scenePos, Qt::RightButton);
    m_view.contextMenu().close();
}

void CanvasHands::drag(supermodule* p_module, const QPoint& p_way)
{
    const QPointF from = p_module->scenePos() + QPointF(30, 30);
    press(from);
    for (int step = 1; step <= 4; ++step) {
        move(from + QPointF(p_way) * step / 4.0);
    }
    release(from + QPointF(p_way));
}

void CanvasHands::key(int p_key, Qt::KeyboardModifiers p_modifiers)
{
    QTest::keyClick(&m_view, static_cast<Qt::Key>(p_key), p_modifiers);
}

QList<int> CanvasHands::ids(const supermodule* p_first)
{
    QList<int> list;
    for (const supermodule* module = p_first; module; module = module->next()) {
        list.append(module->id);
    }
    return list;
}
