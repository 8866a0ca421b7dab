#include "actions/editactionwindow.h"

#include "actions/model/actionimage.h"

editActionWindow::editActionWindow(ActionImage& p_image, QWidget* p_parent)
    : QMainWindow(p_parent), m_image(p_image)
{
}

void editActionWindow::appendActionBlock(const QString& p_path) { m_image.appendTo(p_path); }

void editActionWindow::loadActionBlock(const QString& p_path) { m_image.loadFrom(p_path); }

void editActionWindow::resetActionBlock() { m_image.reset(); }
