#include "build/usermainfile.h"

#include "base/installpath.h"

#include <QByteArray>
#include <QFile>

#include <cstring>

QString userMainPath() { return installPath(QStringLiteral("\\gcc\\example\\user_main.c")); }

QString kitLockPath()
{
    return installPath(QStringLiteral("\\gcc\\example\\build\\gcc\\objects\\lock"));
}

bool writeUserMain(const QString& p_text)
{
    QFile file(userMainPath());
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    const QByteArray text = p_text.toUtf8();
    // As a C string: up to the first NUL.
    const auto size = static_cast<qint64>(std::strlen(text.constData()));
    // A full disk may tell only when the buffer is written out.
    return file.write(text.constData(), size) == size && file.flush();
}
