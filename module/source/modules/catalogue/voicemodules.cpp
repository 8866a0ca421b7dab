#include "modules/catalogue/voicemodules.h"

#include "proj/controls/picturecache.h"

#include <QPainter>

#include <initializer_list>

namespace
{
const ButtonLook s_chooser = {":/voice/voice_down_nol_40x80.png",
                              ":/voice/voice_down_pre_40x80.png", true, false};

int fromTable(std::initializer_list<int> p_sounds, int p_choice)
{
    const bool known = 1 <= p_choice && p_choice <= static_cast<int>(p_sounds.size());
    return known ? *(p_sounds.begin() + p_choice - 1) : p_choice;
}
} // namespace

namespace voiceSounds
{
int piano(int p_choice) { return static_cast<int>(26U - static_cast<unsigned>(p_choice)); }

int animal(int p_choice) { return static_cast<int>(static_cast<unsigned>(p_choice) + 5U); }

int mood(int p_choice) { return fromTable({14, 17, 16, 15}, p_choice); }

int hello(int p_choice) { return fromTable({4, 1, 2, 3}, p_choice); }

int traffic(int p_choice) { return fromTable({12, 13}, p_choice); }
} // namespace voiceSounds

QString voiceModule::cCode() const
{
    return QString::fromLatin1(look().fragment).arg(look().sound(n));
}

void voiceModule::createButtons()
{
    addChooser(s_chooser, QRect(20, 100, 80, 40), [this] {
        if (look().sounds) {
            OnSetVoice(*look().sounds);
        } else {
            onSetPanel(NotesPanel);
        }
    });
}

void voiceModule::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    drawBody(p_painter, ":/voice/voiceModule_bg_nol.png");
    if (look().sounds) {
        const qint64 place = static_cast<qint64>(n) - s_firstChoice;
        drawCentred(p_painter, picture(chooserOf(*look().sounds).entry(place)));
        drawPicture(p_painter, ":/voice/play_icon_28x26.png", 80, 10);
    } else {
        drawPicture(p_painter, ":/voice/piano_icon.png");
        QFont font;
        font.setPixelSize(20);
        font.setWeight(QFont::Bold);
        p_painter->setFont(font);
        p_painter->setPen(Qt::white);
        p_painter->drawText(86, 28, QString::number(n));
    }
}
