#include "proj/textspanel.h"

#include "proj/scale.h"

#include <QPushButton>

namespace
{
const int s_largestFont = 20;

void setFontSize(QPushButton& p_button, int p_pixels)
{
    QFont font = p_button.font();
    font.setPixelSize(p_pixels);
    p_button.setFont(font);
}
} // namespace

TextsPanel::TextsPanel(const QStringList& p_texts, const QString& p_style, QWidget* p_parent)
    : RowPanel(p_parent)
{
    m_scale = 0.6;
    for (const QString& text : p_texts) {
        QPushButton* button = addButton(p_style);
        button->setText(text);
        setFontSize(*button, s_largestFont);
        connect(button, &QPushButton::clicked, this, &TextsPanel::OnNumBtnClick);
    }
}

void TextsPanel::setPanelHeight(int p_height)
{
    const int side = squareSide(p_height);
    layOutRow(QSize(side, side), p_height);
    for (QPushButton* button : buttons()) {
        setFontSize(*button, fontSizeFor(side));
    }
}

int TextsPanel::fontSizeFor(int p_side) { return scale(p_side, 40, 100, 14, s_largestFont); }

void TextsPanel::OnNumBtnClick() { reportSender(); }
