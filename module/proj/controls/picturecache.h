#pragma once

#include <QPixmap>
#include <QString>

/**
 * The picture behind a resource path, loaded once and shared by all who draw it. A path that
 * can't be loaded gives a null pixmap, which paints nothing. Interface thread only.
 */
QPixmap picture(const QString& p_path);
