#include "support/canvas/canvasfixture.h"

#include "document/tzprogramscene.h"
#include "modules/catalogue/dragpayload.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "support/canvas/documentinvariants.h"

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

CanvasFixture::CanvasFixture()
{
    view.setWindowTitle(QStringLiteral("canvas[*]"));
    view.resize(1000, 600);
    view.show();
    QApplication::processEvents();
    view.resetMatrix();
    view.scale(1, 1);
    main()->setPos(100, 200);
    view.centerOn(500, 300);
    documentModified = false;
}

CanvasFixture::~CanvasFixture()
{
    if (m_drag) {
        leave();
    }
    documentModified = false;
}

QPoint CanvasFixture::at(const QPointF& p_scenePos) const { return view.mapFromScene(p_scenePos); }

void CanvasFixture::dragOver(int p_id, const QPointF& p_scenePos)
{
    m_drag.reset(blockDrag(p_id));
    QDragEnterEvent enter(at(p_scenePos), Qt::CopyAction | Qt::MoveAction, m_drag.get(),
                          Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &enter);
    dragOverOn(p_scenePos);
}

void CanvasFixture::dragOverOn(const QPointF& p_scenePos)
{
    QDragMoveEvent move(at(p_scenePos), Qt::CopyAction | Qt::MoveAction, m_drag.get(),
                        Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
}

void CanvasFixture::leave()
{
    QDragLeaveEvent leave;
    QApplication::sendEvent(view.viewport(), &leave);
    m_drag.reset();
}

supermodule* CanvasFixture::drop(int p_id, const QPointF& p_scenePos)
{
    dragOver(p_id, p_scenePos);
    supermodule* module = view.currentModule();
    QDropEvent drop(at(p_scenePos), Qt::CopyAction | Qt::MoveAction, m_drag.get(), Qt::LeftButton,
                    Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &drop);
    m_drag.reset();
    return module;
}

supermodule* CanvasFixture::dropBehind(supermodule* p_last, int p_id)
{
    const QRectF rect = p_last->sceneBoundingRect();
    // The hand holds the block by the middle of its top edge.
    const std::unique_ptr<supermodule> sample(createModuleFromId(p_id));
    return drop(p_id, QPointF(rect.right() + 10 + sample->boundingRect().width() / 2,
                              p_last->scenePos().y() + 10));
}

void CanvasFixture::press(const QPointF& p_scenePos, Qt::MouseButton p_button)
{
    // What the hand sees it can press: blocks get their buttons when they are painted.
    view.viewport()->repaint();
    QTest::mousePress(view.viewport(), p_button, Qt::NoModifier, at(p_scenePos));
}

void CanvasFixture::move(const QPointF& p_scenePos)
{
    QMouseEvent event(QEvent::MouseMove, at(p_scenePos),
                      view.viewport()->mapToGlobal(at(p_scenePos)), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &event);
}

void CanvasFixture::release(const QPointF& p_scenePos)
{
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, at(p_scenePos));
}

void CanvasFixture::click(const QPointF& p_scenePos)
{
    press(p_scenePos);
    release(p_scenePos);
}

void CanvasFixture::drag(supermodule* p_module, const QPoint& p_way)
{
    const QPointF from = p_module->scenePos() + QPointF(30, 30);
    press(from);
    for (int step = 1; step <= 4; ++step) {
        move(from + QPointF(p_way) * step / 4.0);
    }
    release(from + QPointF(p_way));
}

void CanvasFixture::key(int p_key, Qt::KeyboardModifiers p_modifiers)
{
    QTest::keyClick(&view, static_cast<Qt::Key>(p_key), p_modifiers);
}

QList<int> CanvasFixture::ids(const supermodule* p_first)
{
    QList<int> list;
    for (const supermodule* module = p_first; module; module = module->next()) {
        list.append(module->id);
    }
    return list;
}

QList<supermodule*> CanvasFixture::blocks() const { return canvasBlocks(view); }

QStringList CanvasFixture::brokenInvariants() const { return ::brokenInvariants(view); }
