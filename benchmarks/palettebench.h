#pragma once

#include "proj/tzblockwidget.h"
#include "samples.h"
#include "stage.h"

#include <QWidget>

/** The palette of a window of 1920 by 1080, and what a child opens in it. */
class PaletteBench
{
public:
    PaletteBench();

    /** A press on one tab after the other. */
    Samples tabs(int p_rounds);
    /** The number keyboard, the notes, the servo ids and every icon chooser in turn. */
    Samples panels(int p_rounds);

private:
    QWidget m_window;
    TzBlockWidget m_palette;
    Stage m_stage;
};
