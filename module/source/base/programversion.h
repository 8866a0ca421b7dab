#pragma once

#include <QString>

/** The program's version, fixed at build time: "1.1.2". Written into every project file. */
QString programVersion();

/** The date of this version, fixed at build time: "2020-12-17". Shown in the window's title. */
QString programBuildDate();
