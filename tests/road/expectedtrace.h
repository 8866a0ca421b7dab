#pragma once

#include <QHash>
#include <QStringList>

/** What the sensors give all the time: by port, 0 for where nothing is said. */
struct SensorValues {
    QHash<int, int> touch;
    QHash<int, int> analogue;

    /** The same for the emulated controller's command line. */
    QStringList arguments() const;
};

/** What a program does, as its blocks tell. */
struct ExpectedTrace {
    /** As the emulated controller tells it, without times, dots of displays and names of faces. */
    QStringList lines;
    enum End {
        Returns, /**< the lines are all */
        Endless, /**< it goes on for ever like this */
        Unknown, /**< it is not followed further than this */
    };
    End end = Returns;
};

/**
 * Does what the main chain of a stored project says, block by block. Sensors never change, so that
 * a loop that waits for one does so for ever or not at all. p_limit is the controller's time in
 * seconds, and nothing is followed beyond it.
 */
ExpectedTrace expectedTrace(const QByteArray& p_project, const SensorValues& p_sensors,
                            double p_limit);
/** The same for what the controller has told. */
QStringList comparableTrace(const QString& p_output);

/** For each sensor of a stored project the value that lets the first block that asks it go on. */
SensorValues valuesThatLetPass(const QByteArray& p_project);
