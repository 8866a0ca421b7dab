#pragma once

#include "proj/rowpanel.h"

#include <QStringList>

/** A row of words to choose from. SelectNumberSignal() carries the word's place. */
class TextsPanel : public RowPanel
{
    Q_OBJECT

public:
    /** A button with a style sheet for each text. */
    TextsPanel(const QStringList& p_texts, const QString& p_style, QWidget* p_parent = nullptr);

    void setPanelHeight(int p_height) override;

    /** The pixel size of the words on buttons of a side: 14 up to a side of 40, 20 from 100 on. */
    static int fontSizeFor(int p_side);

private slots:
    void OnNumBtnClick();
};
