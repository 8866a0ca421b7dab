#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/** A program that the kit calls and the system lacks, and the Debian packages that bring it. */
struct MissingTool {
    QString name;
    QString packages;
};

/**
 * What a compile that failed with some messages was missing, by what is on the path now; empty if
 * nothing is.
 */
QVector<MissingTool> missingTools(const QByteArray& p_messages);
