#include "base/installpath.h"

#include <QCoreApplication>

QString installPath(const QString& p_literal)
{
    QString literal = p_literal;
#ifndef Q_OS_WIN
    literal.replace(QLatin1Char('\\'), QLatin1Char('/'));
#endif
    return QCoreApplication::applicationDirPath() + literal;
}
