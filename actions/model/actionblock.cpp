#include "actions/model/actionblock.h"

#include "actions/model/servoangle.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace
{

template <typename T, std::size_t N> void fillWith(T (&p_field)[N], T p_value)
{
    std::fill(std::begin(p_field), std::end(p_field), p_value);
}

ActionStep clearedStep(qint16 p_runTime)
{
    ActionStep step = {};
    step.runTime = p_runTime;
    fillWith<quint16>(step.position, ServoCentre);
    fillWith<quint8>(step.servoMask, 0xFF);
    fillWith<quint8>(step.reserved, 0xFF);
    return step;
}

void clearPage(ActionPage& p_page, const ActionStep& p_step)
{
    p_page = {};
    p_page.repeat = 1;
    p_page.rate = 100;
    fillWith(p_page.steps, p_step);
}

void clearBlock(ActionBlock& p_block, const ActionStep& p_step)
{
    // Every byte that isn't named below is 0.
    std::memset(&p_block, 0, sizeof p_block);
    fillWith<quint8>(p_block.reserved0, 0xFF);
    p_block.reserved2 = 0xFF;
    p_block.reserved3 = 0x01;
    p_block.reserved4 = 0x01;
    fillWith<quint8>(p_block.reserved10, 0xFF);
    fillWith<quint8>(p_block.reserved14, 0xFF);
    for (ActionPage& page : p_block.pages) {
        clearPage(page, p_step);
    }
    fillWith<quint8>(p_block.reserved57469, 0xFF);
}

} // namespace

ActionStep builtActionStep() { return clearedStep(50); }

ActionBlock builtActionBlock()
{
    ActionBlock block;
    clearBlock(block, builtActionStep());
    return block;
}

void resetActionBlock(ActionBlock& p_block) { clearBlock(p_block, clearedStep(100)); }

ActionTrailer buildActionTrailer()
{
    constexpr quint8 mark[] = {0x55, 0xAA, 0x5A, 0x5A, 0x55, 0xAA, 0x5A, 0x5A};
    constexpr char text[] = " Korvane Kinetic Edition";

    ActionTrailer trailer = {};
    static_assert(sizeof mark == sizeof trailer.mark && sizeof text <= sizeof trailer.text);
    std::copy(std::begin(mark), std::end(mark), std::begin(trailer.mark));
    std::copy(std::begin(text), std::end(text), std::begin(trailer.text));
    fillWith<quint8>(trailer.reserved, 0xFF);
    return trailer;
}

QByteArray actionPageName(const ActionBlock& p_block, int p_page)
{
    Q_ASSERT(p_page >= 0 && p_page < actionPageCount);
    const char* image = reinterpret_cast<const char*>(&p_block);
    const char* begin = image + offsetof(ActionBlock, pages) +
                        static_cast<std::size_t>(p_page) * sizeof(ActionPage) +
                        offsetof(ActionPage, name);
    const char* end = std::find(begin, image + sizeof p_block, '\0');
    return QByteArray(begin, static_cast<int>(end - begin));
}
