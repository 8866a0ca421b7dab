#pragma once

#include <QString>
#include <QVector>

class supermodule;

/** A kind of program to measure with, as shapes.json tells it. */
struct Shape {
    QString name;
    /** Block types; "[" and "]" around a loop's body, behind the loop's type. */
    QString pattern;
    /** Whether the blocks stand in rows, one below the other, instead of in one chain. */
    bool rows = false;
};

/** The shapes of a file; empty, with a message on the standard error, if it can't be read. */
QVector<Shape> readShapes(const QString& p_path);

/**
 * Makes p_count blocks in the pattern's order, over and over, all in p_main's scene and
 * registered, and lays them out: in a chain behind p_main, or in about as many rows as a row has
 * blocks, the first of them behind p_main and the others loose. A repetition that would be too long
 * is cut short. False if the pattern isn't one.
 */
bool buildShape(const Shape& p_shape, int p_count, supermodule* p_main);
