#include "errorstream.h"

#include <cstdio>

void writeToErrorStream(const QString& p_text)
{
    // By length, since a text may hold a NUL.
    const QByteArray bytes = p_text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}
