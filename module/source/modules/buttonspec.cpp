#include "modules/buttonspec.h"

#include "proj/controls/picturecache.h"
#include "proj/controls/selectablebutton.h"
#include "proj/controls/stylesheets.h"

namespace
{
/** Large enough for digits to be legible at a zoom of 0.5. */
const int s_fontPixels = 20;
} // namespace

std::unique_ptr<QPushButton> makeButton(const ButtonSpec& p_spec)
{
    std::unique_ptr<QPushButton> button;
    if (p_spec.keys != 0) {
        auto field = std::make_unique<SelectableButton>();
        field->setKeyMask(p_spec.keys);
        button = std::move(field);
    } else {
        button = std::make_unique<QPushButton>();
    }
    const ButtonLook& look = p_spec.look;
    button->setStyleSheet(twoPictureStyle(
        QString::fromLatin1(look.normalPicture), QString::fromLatin1(look.pressedPicture), look.gap,
        look.whiteText ? QStringLiteral("color:white;") : QString(),
        QString::fromLatin1(look.property)));
    QFont font = button->font();
    font.setPixelSize(s_fontPixels);
    button->setFont(font);
    if (look.arrow) {
        button->setIcon(QIcon(picture(QStringLiteral(":/btn_downarrow_18x14.png"))));
        button->setIconSize(QSize(18, 14));
    }
    button->setText(p_spec.text);
    if (p_spec.toolTip) {
        button->setToolTip(QString::fromLatin1(p_spec.toolTip));
    }
    // Otherwise a proxy grows with the text of its widget.
    button->setFixedSize(p_spec.geometry.size());
    return button;
}
