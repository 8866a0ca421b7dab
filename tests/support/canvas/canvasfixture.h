#pragma once

#include "support/canvas/canvashands.h"

/** A canvas of 1000 by 600 pixels at a scale of 1, with its main block at scene (100, 200). */
class CanvasFixture : public CanvasHands
{
public:
    CanvasFixture();
    ~CanvasFixture();
    Q_DISABLE_COPY(CanvasFixture)

    Document document;
    TzProgramView view{document};

    /** All blocks of the scene but the preview. */
    QList<supermodule*> blocks() const;
    /** What breaks the rules of a document, as readable lines; empty when all is well. */
    QStringList brokenInvariants() const;
};
