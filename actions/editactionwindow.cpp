#include "actions/editactionwindow.h"

#include <QFile>

#include <cstring>

editActionWindow::editActionWindow(QWidget* p_parent)
    : QMainWindow(p_parent), m_actionBlock(std::make_unique<ActionBlock>(builtActionBlock()))
{
}

editActionWindow::~editActionWindow() = default;

void editActionWindow::appendActionBlock(const QString& p_path)
{
    if (writeActionBlock(p_path)) {
        m_modified = false;
    }
}

void editActionWindow::loadActionBlock(const QString& p_path)
{
    constexpr qint64 size = sizeof(ActionBlock);
    QFile file(p_path);
    if (!file.open(QIODevice::ReadOnly) || file.size() < size || !file.seek(file.size() - size)) {
        return;
    }
    // By way of a buffer, so that a read that breaks off leaves no mixture behind.
    const QByteArray bytes = file.read(size);
    if (bytes.size() != size) {
        return;
    }
    std::memcpy(m_actionBlock.get(), bytes.constData(), sizeof(ActionBlock));
    if (m_actionBlock->firstFormatMark != 0 || m_actionBlock->secondFormatMark != 0) {
        resetActionBlock();
    }
    m_modified = false;
}

void editActionWindow::resetActionBlock() { ::resetActionBlock(*m_actionBlock); }

bool editActionWindow::writeActionBlock(const QString& p_path) const
{
    QFile file(p_path);
    if (!file.open(QIODevice::Append)) {
        return false;
    }
    file.write(reinterpret_cast<const char*>(m_actionBlock.get()), sizeof(ActionBlock));
    return true;
}
