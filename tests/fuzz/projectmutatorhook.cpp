#include "projectmutator.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

/*
 * What the fuzzer calls for a new input: half the changes are bytes, a quarter of all with the tag
 * left wrong; the other half changes the tree.
 */

extern "C" size_t LLVMFuzzerMutate(uint8_t* p_data, size_t p_size, size_t p_maximum);

namespace
{
/** Puts a text in the place of an input, unless it is too long. */
size_t put(const QByteArray& p_text, uint8_t* p_data, size_t p_size, size_t p_maximum)
{
    const auto size = static_cast<size_t>(p_text.size());
    if (size > p_maximum) {
        return p_size;
    }
    std::memcpy(p_data, p_text.constData(), size);
    return size;
}

QByteArray bytes(const uint8_t* p_data, size_t p_size)
{
    return QByteArray(reinterpret_cast<const char*>(p_data), static_cast<int>(p_size));
}
} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* p_data, size_t p_size, size_t p_maximum,
                                          unsigned int p_seed)
{
    switch (p_seed % 4) {
    case 0:
        return LLVMFuzzerMutate(p_data, p_size, p_maximum);
    case 1: {
        const size_t size = LLVMFuzzerMutate(p_data, p_size, p_maximum);
        return put(withRightTag(bytes(p_data, size)), p_data, size, p_maximum);
    }
    default: {
        const QByteArray text = bytes(p_data, p_size);
        const QByteArray changed = withChangedTree(text, QByteArray(), p_seed / 4);
        // No XML, or no change: bytes then.
        return changed == text ? LLVMFuzzerMutate(p_data, p_size, p_maximum)
                               : put(changed, p_data, p_size, p_maximum);
    }
    }
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* p_first, size_t p_firstSize,
                                            const uint8_t* p_second, size_t p_secondSize,
                                            uint8_t* p_out, size_t p_maximum, unsigned int p_seed)
{
    const QByteArray text =
        withChangedTree(bytes(p_first, p_firstSize), bytes(p_second, p_secondSize), p_seed);
    return put(text, p_out, 0, p_maximum);
}
