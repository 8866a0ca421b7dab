#include "proj/numberspanel.h"

#include "proj/controls/picturecache.h"
#include "proj/controls/selectablebutton.h"

#include <QIcon>
#include <QPushButton>
#include <QVariant>

namespace
{
struct NumberKey {
    uint32_t option;
    int key;
    const char* text;
    const char* icon;
};

const char s_deleteIcon[] = ":/delete_number_icon_120x60.png";
const NumberKey s_keys[] = {
    {KeyboardDigits, Qt::Key_0, "0", nullptr},
    {KeyboardDigits, Qt::Key_1, "1", nullptr},
    {KeyboardDigits, Qt::Key_2, "2", nullptr},
    {KeyboardDigits, Qt::Key_3, "3", nullptr},
    {KeyboardDigits, Qt::Key_4, "4", nullptr},
    {KeyboardDigits, Qt::Key_5, "5", nullptr},
    {KeyboardDigits, Qt::Key_6, "6", nullptr},
    {KeyboardDigits, Qt::Key_7, "7", nullptr},
    {KeyboardDigits, Qt::Key_8, "8", nullptr},
    {KeyboardDigits, Qt::Key_9, "9", nullptr},
    {KeyboardPoint, Qt::Key_Period, ".", nullptr},
    {KeyboardMinus, Qt::Key_Minus, "-", nullptr},
    {KeyboardDelete, Qt::Key_Backspace, "", s_deleteIcon},
};

const char s_keyProperty[] = "key";
} // namespace

NumbersPanel::NumbersPanel(uint32_t p_numberOption, QWidget* p_parent) : RowPanel(p_parent)
{
    m_scale = 0.4;
    const QString style = QStringLiteral(
        "QPushButton{border-image:url(:/number_nol_120x60.png);background-color:transparent}"
        "QPushButton:pressed{border-image:url(:/number_pre_120x60.png);background-color:transparent"
        "}");
    for (const NumberKey& key : s_keys) {
        if (!(p_numberOption & key.option)) {
            continue;
        }
        QPushButton* button = addButton(style);
        button->setText(QString::fromLatin1(key.text));
        button->setProperty(s_keyProperty, key.key);
        if (key.icon) {
            button->setIcon(QIcon(picture(QString::fromLatin1(key.icon))));
        }
        QFont keyFont = button->font();
        keyFont.setPixelSize(24);
        button->setFont(keyFont);
        connect(button, &QPushButton::clicked, this, &NumbersPanel::onNumberEditBtnClick);
    }
}

void NumbersPanel::setPanelHeight(int p_height)
{
    const QSize largest(120, 60);
    const double wanted = m_scale * p_height;
    QSize size = largest;
    if (wanted < largest.height()) {
        const int height = static_cast<int>(wanted);
        size = QSize(2 * height, height);
    }
    layOutRow(size, p_height);
    // Only the last key has an icon, if it is there.
    if (!buttons().isEmpty()) {
        QPushButton& last = *buttons().last();
        last.setIconSize(size);
        if (!last.icon().isNull()) {
            last.setIcon(pictureIcon(QLatin1String(s_deleteIcon), size));
        }
    }
}

void NumbersPanel::onNumberEditBtnClick()
{
    if (const QObject* button = sender()) {
        emit SelectNumberSignal(button->property(s_keyProperty).toInt());
    }
}
