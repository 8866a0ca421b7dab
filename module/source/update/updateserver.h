#pragma once

#include <QString>

/**
 * Where the update service is asked: an HTTPS address without a path and without a slash at its
 * end. That is TILER_UPDATE_SERVER of the build.
 */
QString updateServer();
/** For a test that asks a server of its own. */
void setUpdateServer(const QString& p_base);
