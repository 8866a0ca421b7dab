#include "base/programversion.h"

QString programVersion() { return QStringLiteral(TILER_VERSION); }

QString programBuildDate() { return QStringLiteral(TILER_VERSION_DATE); }
