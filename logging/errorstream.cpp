#include "logging/errorstream.h"

#include <QTextCodec>

#include <cstdio>

void writeToErrorStream(const QString& p_text)
{
    // When the process ends, Qt forgets the code page and would write question marks.
    const QByteArray bytes = QTextCodec::codecForLocale() ? p_text.toLocal8Bit() : p_text.toUtf8();
    // By length, since a text may hold a NUL.
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}
