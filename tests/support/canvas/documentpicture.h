#pragma once

#include <QStringList>

class TzProgramView;

/**
 * All that makes up the document on a canvas, as readable lines: its blocks with their keys and
 * values, the very objects, the undo history, the recent list and the marks of a change. Two
 * pictures are equal when nothing happened in between.
 */
QStringList documentPicture(const TzProgramView& p_view);

/** Writes a whole file; false if that failed. */
bool writeWhole(const QString& p_path, const QByteArray& p_content);
/** Reads a whole file; "unreadable" if that failed. */
QByteArray readWhole(const QString& p_path);
