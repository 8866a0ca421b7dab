#include "modules/catalogue/blockcatalogue.h"

#include "modules/catalogue/drivemodules.h"
#include "modules/catalogue/expressionmodules.h"
#include "modules/catalogue/loopmodules.h"
#include "modules/catalogue/motormodules.h"
#include "modules/catalogue/sensormodule.h"
#include "modules/catalogue/speedmodule.h"
#include "modules/catalogue/steeringenginemodule.h"
#include "modules/catalogue/timemodules.h"
#include "modules/catalogue/voicemodules.h"
#include "modules/mainmodule.h"

#include <QCoreApplication>

#include <iterator>

namespace
{
template <class Block>
supermodule* make(int p_id, const QString& p_imagePath, const QString& p_pressedPath,
                  const QString& p_text)
{
    return new Block(p_id, p_imagePath, p_pressedPath, p_text);
}

// One row a block type, in the order of the palette. The main block's row never shows: its caption
// is not translated and its picture not seen.
const CatalogueRow s_rows[] = {
    {HiddenCategory, 0, "main", ":/move/moveForward_time.png", make<mainModule>, nullptr},
    {ActionCategory, 104, QT_TRANSLATE_NOOP("QObject", "前进时间"), ":/move/moveForward_time.png",
     make<moveForwardTimeModule>, copyFrames::plain},
    {ActionCategory, 118, QT_TRANSLATE_NOOP("QObject", "后退时间"), ":/move/backford_time.png",
     make<moveBackwardTimeModule>, copyFrames::plain},
    {ActionCategory, 119, QT_TRANSLATE_NOOP("QObject", "左转时间"), ":/move/turnleft_time.png",
     make<turnLeftTimeModule>, copyFrames::plain},
    {ActionCategory, 120, QT_TRANSLATE_NOOP("QObject", "右转时间"), ":/move/turnright_time.png",
     make<turnRightTimeModule>, copyFrames::plain},
    {ActionCategory, 100, QT_TRANSLATE_NOOP("QObject", "速度"), ":/move/move_speed.png",
     make<speedmodule>, copyFrames::plain},
    {ActionCategory, 103, QT_TRANSLATE_NOOP("QObject", "前进"), ":/move/moveForward.png",
     make<forwardModule>, copyFrames::bare},
    {ActionCategory, 102, QT_TRANSLATE_NOOP("QObject", "后退"), ":/move/moveBackword.png",
     make<backforwardModule>, copyFrames::bare},
    {ActionCategory, 106, QT_TRANSLATE_NOOP("QObject", "左转"), ":/move/turn_left.png",
     make<turnleftModule>, copyFrames::bare},
    {ActionCategory, 109, QT_TRANSLATE_NOOP("QObject", "右转"), ":/move/turn_right.png",
     make<turnrightModule>, copyFrames::bare},
    {ActionCategory, 101, QT_TRANSLATE_NOOP("QObject", "等待"), ":/move/move_wait.png",
     make<moveWaitModule>, copyFrames::plain},
    {ActionCategory, 105, QT_TRANSLATE_NOOP("QObject", "停止"), ":/move/stopMoving.png",
     make<stopMovingModule>, copyFrames::bare},
    {ActionCategory, 111, QT_TRANSLATE_NOOP("QObject", "单电机顺时针"),
     ":/move/single_motor_clockwise.png", make<motorClockwiseModule>, copyFrames::plain},
    {ActionCategory, 113, QT_TRANSLATE_NOOP("QObject", "单电机顺时针时间"),
     ":/move/single_motor_clockwise_time.png", make<motorClockwiseTimeModule>,
     copyFrames::twoDrawers},
    {ActionCategory, 110, QT_TRANSLATE_NOOP("QObject", "单电机逆时针"),
     ":/move/single_motor_anti_clockwise.png", make<motorAntiClockwiseModule>, copyFrames::plain},
    {ActionCategory, 112, QT_TRANSLATE_NOOP("QObject", "单电机逆时针时间"),
     ":/move/single_motor_anti_clockwise_time.png", make<motorAntiClockwiseTimeModule>,
     copyFrames::twoDrawers},
    {ActionCategory, 117, QT_TRANSLATE_NOOP("QObject", "单电机停止"),
     ":/move/single_motor_stop.png", make<singleMotorStop>, copyFrames::plain},
    {ActionCategory, 107, QT_TRANSLATE_NOOP("QObject", "舵机角度"), ":/move/serve.png",
     make<steeringenginemodule>, copyFrames::twoDrawers},
    {SoundCategory, 800, QT_TRANSLATE_NOOP("QObject", "钢琴"), ":/voice/piano.png",
     make<pianoModule>, copyFrames::plain},
    {SoundCategory, 801, QT_TRANSLATE_NOOP("QObject", "动物"), ":/voice/animal.png",
     make<animalModule>, copyFrames::plain},
    {SoundCategory, 802, QT_TRANSLATE_NOOP("QObject", "心情"), ":/voice/xinqing.png",
     make<biaoqingModule>, copyFrames::plain},
    {SoundCategory, 803, QT_TRANSLATE_NOOP("QObject", "打招呼"), ":/voice/hello.png",
     make<helloModule>, copyFrames::plain},
    {SoundCategory, 804, QT_TRANSLATE_NOOP("QObject", "交通"), ":/voice/traffic.png",
     make<trafficModule>, copyFrames::plain},
    {ExpressionCategory, 903, QT_TRANSLATE_NOOP("QObject", "表情"),
     ":/expression/expression_two.png", make<expressionTwoModule>, copyFrames::plain},
    {ExpressionCategory, 904, QT_TRANSLATE_NOOP("QObject", "关闭两个表情"),
     ":/expression/expression_two_close.png", make<closeAllModule>, copyFrames::bare},
    {ExpressionCategory, 902, QT_TRANSLATE_NOOP("QObject", "数字"),
     ":/expression/expression_shuzi.png", make<shuziModule>, copyFrames::twoDrawers},
    {ExpressionCategory, 906, QT_TRANSLATE_NOOP("QObject", "字母"),
     ":/expression/expression_zimu.png", make<zimuModule>, copyFrames::twoDrawers},
    {ExpressionCategory, 905, QT_TRANSLATE_NOOP("QObject", "运算"),
     ":/expression/expression_yunsuan.png", make<yunsuanModule>, copyFrames::twoDrawers},
    {ExpressionCategory, 900, QT_TRANSLATE_NOOP("QObject", "符号"),
     ":/expression/expression_fuhao.png", make<fuhaoModule>, copyFrames::twoDrawers},
    {ExpressionCategory, 901, QT_TRANSLATE_NOOP("QObject", "关闭一个表情"),
     ":/expression/expression_one_close.png", make<closeOneModule>, copyFrames::plain},
    {ControlCategory, 303, QT_TRANSLATE_NOOP("QObject", "无限循环"), ":/condition/foreveModule.png",
     make<foreverModule>, copyFrames::endlessLoop},
    {ControlCategory, 301, QT_TRANSLATE_NOOP("QObject", "多次循环"), ":/condition/forModule.png",
     make<forModule>, copyFrames::loop},
    {ControlCategory, 306, QT_TRANSLATE_NOOP("QObject", "循环直到红外检测"),
     ":/condition/loopuntiinfrared.png", make<loopuntiinfraredModule>, copyFrames::loopUntil},
    {ControlCategory, 307, QT_TRANSLATE_NOOP("QObject", "循环触碰检测"),
     ":/condition/loopuntiltouch.png", make<loopuntiTouchModule>, copyFrames::loopUntil},
    {ControlCategory, 308, QT_TRANSLATE_NOOP("QObject", "等待红外"),
     ":/condition/waituntiinfrared.png", make<waituntiinfraredModule>, copyFrames::twoDrawers},
    {ControlCategory, 309, QT_TRANSLATE_NOOP("QObject", "等待触碰"),
     ":/condition/waituntiltouch.png", make<waituntiTouchModule>, copyFrames::twoDrawers},
};
} // namespace

const CatalogueRow* catalogueBegin() { return std::begin(s_rows); }

const CatalogueRow* catalogueEnd() { return std::end(s_rows); }
