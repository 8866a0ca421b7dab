#include "support/canvas/canvasfixture.h"

#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "support/canvas/documentinvariants.h"

#include <QApplication>

CanvasFixture::CanvasFixture() : CanvasHands(view)
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
    leave();
    documentModified = false;
}

QList<supermodule*> CanvasFixture::blocks() const { return canvasBlocks(view); }

QStringList CanvasFixture::brokenInvariants() const { return ::brokenInvariants(view); }
