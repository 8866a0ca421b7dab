#pragma once

#include "canvas/tzprogramview.h"
#include "samples.h"
#include "shape.h"
#include "stage.h"

#include <QMimeData>
#include <QTemporaryDir>

#include <memory>

/**
 * The canvas of a screen of 1920 by 1080, filled with a program of a shape and a size, and the
 * operations that are measured. Each goes the way that a user's hand goes: through the view's own
 * events, until the change is painted.
 */
class CanvasBench
{
public:
    CanvasBench();

    /** What an operation took, and how often it was run. */
    struct Result {
        QString operation;
        Samples samples;
    };

    /** Fills the canvas with a program and writes it to a file. False if the shape is broken. */
    bool setUp(const Shape& p_shape, int p_blocks);
    /** Open, until painted. */
    Samples open(int p_runs);
    /** Save with action data. */
    Samples save(int p_runs);
    /** The C text of the program. */
    Samples generate(int p_runs);
    /** One step of a drag of the chain's head, with all that follows. */
    Samples drag(int p_steps);
    /** The drop of a new block into the middle. The program grows by a block a run. */
    Samples drop(int p_runs);
    /** One step of a new block over the program's middle, before it is dropped. */
    Samples paletteDrag(int p_steps);
    /** One step of the wheel in the strip that scrolls sideways. */
    Samples scroll(int p_steps);
    /** One step of the zoom, back and forth. */
    Samples zoom(int p_steps);
    /** Removal of the whole program. */
    Samples clear(int p_runs);
    /** Bytes of heap a block in use once a program is open and painted. */
    double bytesPerBlock();

private:
    void openProgram();
    void putMiddleInSight();
    void sendDrag(const QPoint& p_at, bool p_first);
    QPoint middleLink() const;

    QTemporaryDir m_folder;
    QString m_path;
    int m_blocks = 0;
    Document m_document;
    TzProgramView m_view{m_document};
    Stage m_stage;
    std::unique_ptr<QMimeData> m_payload;
};
