#include "modules/graphicsitem_param.h"

#include "modules/supermodule.h"
#include "proj/controls/modulestyles.h"
#include "proj/controls/picturecache.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QPainter>
#include <QPushButton>

namespace
{
enum class Slot { SelectParam, SelectParam1 };

/** What a mode of the pop-up shows; see the table below. */
struct Mode {
    const char* background;
    std::initializer_list<const char*> entries;
    int iconSide; /**< entries are pictures of this size; 0: they are texts */
    const char* normalPicture;
    const char* pressedPicture;
    int columns;
    int advance; /**< from one column to the next */
    int top;     /**< y of the first row */
    int rowStep; /**< from one row to the next */
    int columnSlope;
    Slot slot;
    bool whiteText;
};

const Mode s_modes[] = {
    // Speed.
    {":/param_item_bg_220x92.png",
     {":/speed_slow.png", ":/speed_mid.png", ":/speed_fast.png"},
     40,
     ":/select_speed_nol_60x60.png",
     ":/select_speed_pre_60x60.png",
     3,
     75,
     20,
     0,
     0,
     Slot::SelectParam,
     false},
    // Motor port.
    {":/param_item_bg_290x92.png",
     {"A", "B", "C", "D"},
     0,
     ":/motor_port_nol.png",
     ":/motor_port_pre.png",
     4,
     70,
     20,
     0,
     0,
     Slot::SelectParam,
     true},
    // Infrared condition.
    {":/bg_150x92.png",
     {":/infread_body.png", ":/infread_nobody.png"},
     32,
     ":/port_nol_60x60.png",
     ":/port_nol_60x60.png",
     2,
     70,
     20,
     0,
     0,
     Slot::SelectParam1,
     true},
    // Sensor port.
    {":/bg_220x162.png",
     {"1", "2", "3", "4", "5"},
     0,
     ":/touch_port_nol.png",
     ":/touch_port_pre.png",
     3,
     70,
     20,
     70,
     0,
     Slot::SelectParam,
     true},
    // Touch condition.
    {":/bg_150x92.png",
     {":/until_touch_down_icon.png", ":/until_touch_up_icon.png"},
     32,
     ":/port_nol_60x60.png",
     ":/port_nol_60x60.png",
     2,
     70,
     20,
     0,
     0,
     Slot::SelectParam1,
     true},
    // Seven numbers; no block opens this one.
    {":/voice/voice_bg_290x22.png",
     {"1", "2", "3", "4", "5", "6", "7"},
     0,
     ":/voice/select_voice_nol_60x60.png",
     ":/voice/select_voice_pre_60x60.png",
     4,
     70,
     20,
     70,
     0,
     Slot::SelectParam,
     true},
    // Display port. The second entry stands one unit lower than the first: that is meant.
    {":/expression/expression_bg_140x80.png",
     {"2", "3"},
     0,
     ":/fuhao_port_nol.png",
     ":/fuhao_port_pre.png",
     2,
     70,
     15,
     0,
     1,
     Slot::SelectParam,
     true},
};
/** Letters and figures on the buttons are to be read at half their size, too. */
const int s_fontPixels = 24;
const int s_modeCount = sizeof(s_modes) / sizeof(s_modes[0]);

// Owned by the scene that it was made in.
QPointer<graphicsItem_Param> s_shared;

} // namespace

graphicsItem_Param::graphicsItem_Param(QGraphicsScene* p_scene, QGraphicsItem* p_parent)
    : QGraphicsItem(p_parent)
{
    setZValue(10.0);
    if (p_scene && !p_parent) {
        p_scene->addItem(this);
    }
}

graphicsItem_Param* graphicsItem_Param::shared(QGraphicsScene* p_scene)
{
    if (!s_shared) {
        s_shared = new graphicsItem_Param(p_scene, nullptr);
    }
    return s_shared;
}

graphicsItem_Param* graphicsItem_Param::existing() { return s_shared; }

void graphicsItem_Param::setModule(supermodule* p_module) { m_module = p_module; }

QRectF graphicsItem_Param::boundingRect() const
{
    return QRectF(0, 0, m_background.width(), m_background.height());
}

void graphicsItem_Param::paint(QPainter* p_painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    p_painter->drawPixmap(0, 0, m_background);
}

void graphicsItem_Param::setMode(int p_mode)
{
    qDeleteAll(childItems());
    m_buttons.clear();
    if (0 <= p_mode && p_mode < s_modeCount) {
        const Mode& mode = s_modes[p_mode];
        prepareGeometryChange();
        m_backgroundImage = QString::fromLatin1(mode.background);
        m_background = picture(m_backgroundImage);
        const QString style = twoPictureStyle(
            QString::fromLatin1(mode.normalPicture), QString::fromLatin1(mode.pressedPicture), 32,
            mode.whiteText ? QStringLiteral("color:white;") : QString());
        for (const char* entry : mode.entries) {
            const int i = m_buttons.size();
            auto* button = new QPushButton;
            button->setStyleSheet(style);
            button->setGeometry(0, 0, 60, 60);
            if (mode.iconSide > 0) {
                button->setIcon(QIcon(picture(QString::fromLatin1(entry))));
                button->setIconSize(QSize(mode.iconSide, mode.iconSide));
            } else {
                QFont font = button->font();
                font.setPixelSize(s_fontPixels);
                button->setFont(font);
                button->setText(QString::fromLatin1(entry));
            }
            auto* proxy = new QGraphicsProxyWidget(this);
            proxy->setWidget(button);
            const int x = mode.advance * (i % mode.columns) + 5;
            const int y = mode.rowStep * (i / mode.columns) + mode.columnSlope * i + mode.top;
            proxy->setGeometry(QRectF(x, y, 60, 60));
            connect(button, &QPushButton::clicked, this,
                    mode.slot == Slot::SelectParam ? &graphicsItem_Param::OnSelectParam
                                                   : &graphicsItem_Param::OnSelectParam1);
            m_buttons.append(button);
        }
    }
    setVisible(true);
}

void graphicsItem_Param::OnSelectParam() { choose(0); }

void graphicsItem_Param::OnSelectParam1() { choose(5); }

void graphicsItem_Param::choose(int p_offset)
{
    auto* button = dynamic_cast<QPushButton*>(sender());
    if (!button || !m_module) {
        return;
    }
    // A block that has no use for the index keeps the base class's empty operation.
    m_module->setParamIndex(m_buttons.indexOf(button) + p_offset);
    setVisible(false);
}
