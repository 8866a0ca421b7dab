#include "proj/iconspanel.h"

#include "proj/controls/picturecache.h"

#include <QIcon>
#include <QPushButton>

IconsPanel::IconsPanel(const QStringList& p_pictures, const QString& p_style, QWidget* p_parent)
    : RowPanel(p_parent), m_pictures(p_pictures)
{
    m_scale = 0.6;
    for (const QString& path : p_pictures) {
        QPushButton* button = addButton(p_style);
        button->setIcon(QIcon(picture(path)));
        connect(button, &QPushButton::clicked, this, &IconsPanel::OnNumBtnClick);
    }
}

void IconsPanel::setPanelHeight(int p_height)
{
    const int side = squareSide(p_height);
    layOutRow(QSize(side, side), p_height);
    for (int i = 0; i < buttons().size(); ++i) {
        buttons().at(i)->setIcon(pictureIcon(m_pictures.at(i), QSize(side, side)));
        buttons().at(i)->setIconSize(QSize(side, side));
    }
}

void IconsPanel::OnNumBtnClick() { reportSender(); }
