#pragma once

#include <QString>

// Where an update keeps its files: a folder in the system's temporary location.

QString updateFolder();
/** The version that the installer brings, as storeUpdateVersion() writes it. */
QString storedVersionFile();
QString installerFile();
QString downloadedFirmwareFile();
/** Not in that folder: the firmware beside the program, from where the controller gets it. */
QString installedFirmwareFile();

/**
 * Makes the folder if there is none, for its owner alone. False if it isn't a folder of this
 * user's: what lies in somebody else's may be anything, and is not to be used.
 */
bool prepareUpdateFolder();

/** Writes the version that the installer brings. A file that can't be opened stays as it is. */
void storeUpdateVersion(const QString& p_version);
/** Reads it back; empty if there is none. */
QString storedUpdateVersion();

/**
 * Puts the downloaded firmware beside the program, in the place of what is there. Whether it got
 * there is not told.
 */
void installFirmware();

/**
 * Starts the installer on its own, in the program's folder; on Linux it is made executable first.
 * False if it can't be started.
 */
bool startInstaller();
