#pragma once

class QString;

/** Lays the pictures of a folder out on pages beside it, several on each, with their names. */
void makeSheets(const QString& p_folder);
