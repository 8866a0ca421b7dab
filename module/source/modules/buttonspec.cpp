#include "modules/buttonspec.h"

#include "proj/controls/picturebutton.h"
#include "proj/controls/picturecache.h"
#include "proj/controls/selectablebutton.h"
#include "proj/controls/stylesheets.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace
{
/**
 * A button that paints its picture itself, as large as that is. Of a background image Qt paints
 * two, one and two pixels inside of the frame that it leaves room for.
 */
class BackgroundButton final : public PictureButton
{
protected:
    void paintEvent(QPaintEvent*) override
    {
        const QPixmap shown = picture(shownPicture());
        QStylePainter painter(this);
        drawPicture(&painter, shown.rect(), shown);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.rect = shown.rect();
        paintLabel(painter, option);
    }
};

/** Large enough for digits to be legible at a zoom of 0.5. */
const int s_fontPixels = 20;
} // namespace

std::unique_ptr<QPushButton> makeButton(const ButtonSpec& p_spec)
{
    const ButtonLook& look = p_spec.look;
    const QString normal = QString::fromLatin1(look.normalPicture);
    const QString pressed = QString::fromLatin1(look.pressedPicture);
    std::unique_ptr<PictureButton> button;
    if (p_spec.keys != 0) {
        auto field = std::make_unique<SelectableButton>();
        field->setKeyMask(p_spec.keys);
        button = std::move(field);
    } else if (qstrcmp(look.property, "background-image") == 0) {
        button = std::make_unique<BackgroundButton>();
    } else {
        button = std::make_unique<PictureButton>();
    }
    button->setPictures(normal, pressed);
    button->setStyleSheet(twoPictureStyle(
        normal, pressed, look.gap, look.whiteText ? QStringLiteral("color:white;") : QString(),
        QString::fromLatin1(look.property)));
    QFont font = button->font();
    font.setPixelSize(s_fontPixels);
    button->setFont(font);
    if (look.arrow) {
        button->setIconPicture(QStringLiteral(":/btn_downarrow_18x14.png"), QSize(18, 14));
    }
    button->setText(p_spec.text);
    if (p_spec.toolTip) {
        button->setToolTip(QString::fromLatin1(p_spec.toolTip));
    }
    // Otherwise a proxy grows with the text of its widget.
    button->setFixedSize(p_spec.geometry.size());
    return button;
}
