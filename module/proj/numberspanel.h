#pragma once

#include "proj/rowpanel.h"

#include <cstdint>

/** The number keyboard of the palette. SelectNumberSignal() carries Qt::Key codes. */
class NumbersPanel : public RowPanel
{
    Q_OBJECT

public:
    /** The keys of a keyboard option: digits, point, minus and delete, in this order. */
    explicit NumbersPanel(uint32_t p_numberOption, QWidget* p_parent = nullptr);

    void setPanelHeight(int p_height) override;

private slots:
    void onNumberEditBtnClick();
};
