#include "support/canvas/canvastest.h"

#include <QTest>

void CanvasTest::cleanup()
{
    const QStringList broken = m_canvas ? m_canvas->brokenInvariants() : QStringList();
    m_canvas.reset();
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(QLatin1Char('\n'))));
}
