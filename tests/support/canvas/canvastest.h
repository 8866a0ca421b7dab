#pragma once

#include "support/canvas/canvasfixture.h"

#include <optional>

/**
 * A test each of whose functions and rows has a new canvas, which keeps the rules of a document to
 * the function's end.
 */
class CanvasTest : public QObject
{
    Q_OBJECT

protected:
    std::optional<CanvasFixture> m_canvas;

private slots:
    void init() { m_canvas.emplace(); }
    void cleanup();
};
