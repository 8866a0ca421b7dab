#include "project/checktag.h"

quint32 checkTag(const QByteArray& p_text)
{
    quint32 sum = 0;
    for (const char byte : p_text) {
        // Unsigned arithmetic wraps; a byte from 128 on counts as negative.
        sum += static_cast<quint32>(static_cast<signed char>(byte));
    }
    return ~(sum + 1);
}
