#pragma once

#include <QString>

/**
 * Leads all messages into a new file "app-log.txt" in the folder "log" beside the program, from
 * where an earlier run's one is removed, and to the error stream. To be called once, after the
 * application object was made; it holds to the end of the process.
 *
 * The file gets the messages of a level and of those above it: "trace", "debug", "info", "warning",
 * "error" or "fatal", "info" for an empty text and Debug for any other. The error stream gets those
 * from Debug on. Where the folder or the file can't be made, that is told on the error stream and
 * all else goes on.
 */
void setUpLog(const QString& p_level);
