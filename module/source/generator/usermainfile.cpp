#include "generator/usermainfile.h"

#include "base/installpath.h"

#include <QFile>

QString userMainPath() { return installPath(QStringLiteral("\\gcc\\example\\user_main.c")); }

void writeUserMain(const QString& p_text)
{
    QFile file(userMainPath());
    if (file.open(QIODevice::WriteOnly)) {
        // As a C string: up to the first NUL.
        file.write(p_text.toUtf8().constData());
    }
}
