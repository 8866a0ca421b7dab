#include "actions/model/actionimage.h"

#include <QFile>

#include <cstring>

QByteArray ActionImage::bytes() const
{
    return QByteArray(reinterpret_cast<const char*>(&m_block), Size);
}

bool ActionImage::setBytes(const QByteArray& p_bytes)
{
    if (p_bytes.size() < Size) {
        return false;
    }
    std::memcpy(&m_block, p_bytes.constData() + (p_bytes.size() - Size), Size);
    if (m_block.firstFormatMark != 0 || m_block.secondFormatMark != 0) {
        reset();
    }
    m_modified = false;
    return true;
}

bool ActionImage::loadFrom(const QString& p_path)
{
    QFile file(p_path);
    // A read that breaks off gives fewer bytes, and those change nothing.
    return file.open(QIODevice::ReadOnly) && file.size() >= Size && file.seek(file.size() - Size) &&
           setBytes(file.read(Size));
}

bool ActionImage::appendTo(const QString& p_path, ActionTail p_tail)
{
    QFile file(p_path);
    if (!file.open(QIODevice::Append)) {
        return false;
    }
    QByteArray tail = bytes();
    if (p_tail == ActionTail::ImageAndTrailer) {
        const ActionTrailer trailer = buildActionTrailer();
        tail.append(reinterpret_cast<const char*>(&trailer), sizeof trailer);
    }
    // Meant: the result of the write isn't looked at; the design reports no failure here.
    file.write(tail);
    m_modified = false;
    return true;
}

void ActionImage::reset() { resetActionBlock(m_block); }

ActionPage* ActionImage::page(int p_page)
{
    return p_page >= 0 && p_page < actionPageCount ? &m_block.pages[p_page] : nullptr;
}

const ActionPage* ActionImage::page(int p_page) const
{
    return const_cast<ActionImage*>(this)->page(p_page);
}

ActionStep* ActionImage::step(int p_page, int p_step)
{
    ActionPage* found = page(p_page);
    return found && p_step >= 0 && p_step < actionStepCount ? &found->steps[p_step] : nullptr;
}

const ActionStep* ActionImage::step(int p_page, int p_step) const
{
    return const_cast<ActionImage*>(this)->step(p_page, p_step);
}

QByteArray ActionImage::pageName(int p_page) const
{
    return page(p_page) ? actionPageName(m_block, p_page) : QByteArray();
}
