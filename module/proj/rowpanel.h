#pragma once

#include "proj/panelbase.h"

#include <QList>
#include <QSize>

class QPushButton;

/** Base of the panels that are a row of buttons, each of which gives a value to a block. */
class RowPanel : public PanelBase
{
    Q_OBJECT

public:
    explicit RowPanel(QWidget* p_parent = nullptr);

    /** The buttons from left to right. */
    const QList<QPushButton*>& buttons() const { return m_buttons; }

signals:
    /** A button was pressed: the code of its key, or its place in the row, from 0. */
    void SelectNumberSignal(int n);

protected:
    /** Appends a button with a style sheet to the row. */
    QPushButton* addButton(const QString& p_style);
    /**
     * Places the buttons, all of one size, side by side and halfway down, and sizes the panel to
     * hold them. A row without buttons leaves the panel as it is.
     */
    void layOutRow(const QSize& p_button, int p_height);
    /** The side of a square button: a part of the height, 100 at most. */
    int squareSide(int p_height) const;
    /** Reports the place of the button that sends the signal in hand; -1 for any other sender. */
    void reportSender();

private:
    QList<QPushButton*> m_buttons;
};
