#pragma once

#include "proj/rowpanel.h"

#include <QStringList>

/** A row of pictures to choose from. SelectNumberSignal() carries the picture's place. */
class IconsPanel : public RowPanel
{
    Q_OBJECT

public:
    /** A button with a style sheet for each picture, which is a resource path. */
    IconsPanel(const QStringList& p_pictures, const QString& p_style, QWidget* p_parent = nullptr);

    void setPanelHeight(int p_height) override;

private slots:
    void OnNumBtnClick();

private:
    QStringList m_pictures;
};
