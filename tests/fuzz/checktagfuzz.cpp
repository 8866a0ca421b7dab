#include "fuzztarget.h"
#include "project/checktag.h"

#include <QByteArray>

/*
 * The check tag. Reckoned a second time, another way; and no change of a single byte, nor a cut
 * at the end, may go unnoticed where the sum tells it.
 */

namespace
{
/** The tag by its formula: an exact sum, then brought into 32 bits. */
quint32 tagByTheBook(const QByteArray& p_text)
{
    qint64 sum = 1;
    for (const char byte : p_text) {
        const int value = static_cast<uchar>(byte);
        sum += value < 128 ? value : value - 256;
    }
    return 0xffffffffU - static_cast<quint32>(sum & 0xffffffff);
}
} // namespace

int LLVMFuzzerInitialize(int*, char***) { return 0; }

int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    QByteArray text(reinterpret_cast<const char*>(p_data), static_cast<int>(p_size));
    const quint32 tag = checkTag(text);
    fuzzCheck(tag == tagByTheBook(text), "the tag is not the complement of the sum plus 1");

    // It comes back from the form that a file holds it in.
    bool read = false;
    fuzzCheck(QByteArray::number(tag, 16).toUInt(&read, 16) == tag && read,
              "the tag doesn't come back from its hexadecimal form");

    if (text.isEmpty()) {
        fuzzCheck(tag == 0xfffffffeU, "an empty text has another tag");
        return 0;
    }
    const int at = static_cast<uchar>(text.at(0)) % text.size();
    const char byte = text.at(at);
    text[at] = static_cast<char>(byte ^ 1);
    fuzzCheck(checkTag(text) != tag, "a changed byte leaves the tag as it was");
    text[at] = byte;
    if (text.at(text.size() - 1) != 0) {
        text.chop(1);
        fuzzCheck(checkTag(text) != tag, "a lost byte leaves the tag as it was");
    }
    return 0;
}
