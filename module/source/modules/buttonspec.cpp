#include "modules/buttonspec.h"

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
class BackgroundButton final : public QPushButton
{
public:
    explicit BackgroundButton(const ButtonLook& p_look) : m_look(p_look) {}

protected:
    void paintEvent(QPaintEvent*) override
    {
        const QPixmap shown =
            picture(QString::fromLatin1(isDown() ? m_look.pressedPicture : m_look.normalPicture));
        QStylePainter painter(this);
        painter.drawPixmap(0, 0, shown);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.rect = shown.rect();
        painter.drawControl(QStyle::CE_PushButtonLabel, option);
    }

private:
    const ButtonLook m_look;
};

/** Large enough for digits to be legible at a zoom of 0.5. */
const int s_fontPixels = 20;
} // namespace

std::unique_ptr<QPushButton> makeButton(const ButtonSpec& p_spec)
{
    const ButtonLook& look = p_spec.look;
    std::unique_ptr<QPushButton> button;
    if (p_spec.keys != 0) {
        auto field = std::make_unique<SelectableButton>();
        field->setKeyMask(p_spec.keys);
        button = std::move(field);
    } else if (qstrcmp(look.property, "background-image") == 0) {
        button = std::make_unique<BackgroundButton>(look);
    } else {
        button = std::make_unique<QPushButton>();
    }
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
