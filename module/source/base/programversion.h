#pragma once

#include <QString>

/** The program's version, such as "1.1.2", from the build. Written into every project file. */
QString programVersion();

/** The date of this version, such as "2020-12-17", from the build. In the window's title. */
QString programBuildDate();
