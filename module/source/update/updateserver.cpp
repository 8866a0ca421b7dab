#include "update/updateserver.h"

namespace
{
QString& base()
{
    static QString s_base = QStringLiteral(TILER_UPDATE_SERVER);
    return s_base;
}
} // namespace

QString updateServer() { return base(); }

void setUpdateServer(const QString& p_base) { base() = p_base; }
