#pragma once

#include <QStringList>

class QMimeData;

/** The paths of the project files that a drop from elsewhere begins with, up to any other file. */
QStringList droppedProjects(const QMimeData& p_data);
