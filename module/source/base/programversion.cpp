#include "base/programversion.h"

QString programVersion() { return QStringLiteral("1.1.2"); }

QString programBuildDate() { return QStringLiteral("2020-12-17"); }
