#pragma once

#include "bench.h"

#include <QMap>

/** The figures of an operation and of what it is made of, by name. */
using Figures = QMap<QString, Samples>;

/** What is measured of a program that a Bench can open. */
struct Operation {
    const char* name;
    /** Whether the zoom counts. */
    bool zooms;
    /** Repetitions at up to 1,000 blocks, up to 10,000 and above; 0 for none. */
    int runs[3];
    /** Opens the program itself, or finds it open and the zoom set. */
    void (*run)(Bench& p_bench, const QString& p_path, int p_runs, Figures& p_figures);
};

/** All there are, in the order of a table of results. */
const QVector<Operation>& operations();

/** What a child opens in the palette: its tabs and choosers. */
void measurePalette(Bench& p_bench, int p_rounds, Figures& p_figures);
