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
//
// Meant: of the four timed drives only the first has a copy frame, of the loops those that ask no
// sensor, and no sound or expression has one. The design gives frames to these types alone.
const CatalogueRow s_rows[] = {
    {HiddenCategory, 0, "main", ":/move/moveForward_time.png", make<mainModule>, nullptr},
    {ActionCategory, 104, QT_TRANSLATE_NOOP("QObject", "前进时间"), ":/move/moveForward_time.png",
     make<moveForwardTimeModule>, copyFrames::plain},
    {ActionCategory, 118, QT_TRANSLATE_NOOP("QObject", "后退时间"), ":/move/backford_time.png",
     make<moveBackwardTimeModule>, nullptr},
    {ActionCategory, 119, QT_TRANSLATE_NOOP("QObject", "左转时间"), ":/move/turnleft_time.png",
     make<turnLeftTimeModule>, nullptr},
    {ActionCategory, 120, QT_TRANSLATE_NOOP("QObject", "右转时间"), ":/move/turnright_time.png",
     make<turnRightTimeModule>, nullptr},
    {ActionCategory, 100, QT_TRANSLATE_NOOP("QObject", "速度"), ":/move/move_speed.png",
     make<speedmodule>, copyFrames::plain},
    {ActionCategory, 103, QT_TRANSLATE_NOOP("QObject", "前进"), ":/move/moveForward.png",
     make<forwardModule>, copyFrames::plain},
    {ActionCategory, 102, QT_TRANSLATE_NOOP("QObject", "后退"), ":/move/moveBackword.png",
     make<backforwardModule>, copyFrames::plain},
    {ActionCategory, 106, QT_TRANSLATE_NOOP("QObject", "左转"), ":/move/turn_left.png",
     make<turnleftModule>, copyFrames::plain},
    {ActionCategory, 109, QT_TRANSLATE_NOOP("QObject", "右转"), ":/move/turn_right.png",
     make<turnrightModule>, copyFrames::plain},
    {ActionCategory, 101, QT_TRANSLATE_NOOP("QObject", "等待"), ":/move/move_wait.png",
     make<moveWaitModule>, copyFrames::plain},
    {ActionCategory, 105, QT_TRANSLATE_NOOP("QObject", "停止"), ":/move/stopMoving.png",
     make<stopMovingModule>, copyFrames::plain},
    {ActionCategory, 111, QT_TRANSLATE_NOOP("QObject", "单电机顺时针"),
     ":/move/single_motor_clockwise.png", make<motorClockwiseModule>, copyFrames::plain},
    {ActionCategory, 113, QT_TRANSLATE_NOOP("QObject", "单电机顺时针时间"),
     ":/move/single_motor_clockwise_time.png", make<motorClockwiseTimeModule>, copyFrames::plain},
    {ActionCategory, 110, QT_TRANSLATE_NOOP("QObject", "单电机逆时针"),
     ":/move/single_motor_anti_clockwise.png", make<motorAntiClockwiseModule>, copyFrames::plain},
    {ActionCategory, 112, QT_TRANSLATE_NOOP("QObject", "单电机逆时针时间"),
     ":/move/single_motor_anti_clockwise_time.png", make<motorAntiClockwiseTimeModule>,
     copyFrames::plain},
    {ActionCategory, 117, QT_TRANSLATE_NOOP("QObject", "单电机停止"),
     ":/move/single_motor_stop.png", make<singleMotorStop>, copyFrames::plain},
    {ActionCategory, 107, QT_TRANSLATE_NOOP("QObject", "舵机角度"), ":/move/serve.png",
     make<steeringenginemodule>, copyFrames::plain},
    {SoundCategory, 800, QT_TRANSLATE_NOOP("QObject", "钢琴"), ":/voice/piano.png",
     make<pianoModule>, nullptr},
    {SoundCategory, 801, QT_TRANSLATE_NOOP("QObject", "动物"), ":/voice/animal.png",
     make<animalModule>, nullptr},
    {SoundCategory, 802, QT_TRANSLATE_NOOP("QObject", "心情"), ":/voice/xinqing.png",
     make<biaoqingModule>, nullptr},
    {SoundCategory, 803, QT_TRANSLATE_NOOP("QObject", "打招呼"), ":/voice/hello.png",
     make<helloModule>, nullptr},
    {SoundCategory, 804, QT_TRANSLATE_NOOP("QObject", "交通"), ":/voice/traffic.png",
     make<trafficModule>, nullptr},
    {ExpressionCategory, 903, QT_TRANSLATE_NOOP("QObject", "表情"),
     ":/expression/expression_two.png", make<expressionTwoModule>, nullptr},
    {ExpressionCategory, 904, QT_TRANSLATE_NOOP("QObject", "关闭两个表情"),
     ":/expression/expression_two_close.png", make<closeAllModule>, nullptr},
    {ExpressionCategory, 902, QT_TRANSLATE_NOOP("QObject", "数字"),
     ":/expression/expression_shuzi.png", make<shuziModule>, nullptr},
    {ExpressionCategory, 906, QT_TRANSLATE_NOOP("QObject", "字母"),
     ":/expression/expression_zimu.png", make<zimuModule>, nullptr},
    {ExpressionCategory, 905, QT_TRANSLATE_NOOP("QObject", "运算"),
     ":/expression/expression_yunsuan.png", make<yunsuanModule>, nullptr},
    {ExpressionCategory, 900, QT_TRANSLATE_NOOP("QObject", "符号"),
     ":/expression/expression_fuhao.png", make<fuhaoModule>, nullptr},
    {ExpressionCategory, 901, QT_TRANSLATE_NOOP("QObject", "关闭一个表情"),
     ":/expression/expression_one_close.png", make<closeOneModule>, nullptr},
    {ControlCategory, 303, QT_TRANSLATE_NOOP("QObject", "无限循环"), ":/condition/foreveModule.png",
     make<foreverModule>, copyFrames::loop},
    {ControlCategory, 301, QT_TRANSLATE_NOOP("QObject", "多次循环"), ":/condition/forModule.png",
     make<forModule>, copyFrames::loop},
    {ControlCategory, 306, QT_TRANSLATE_NOOP("QObject", "循环直到红外检测"),
     ":/condition/loopuntiinfrared.png", make<loopuntiinfraredModule>, nullptr},
    {ControlCategory, 307, QT_TRANSLATE_NOOP("QObject", "循环触碰检测"),
     ":/condition/loopuntiltouch.png", make<loopuntiTouchModule>, nullptr},
    {ControlCategory, 308, QT_TRANSLATE_NOOP("QObject", "等待红外"),
     ":/condition/waituntiinfrared.png", make<waituntiinfraredModule>, nullptr},
    {ControlCategory, 309, QT_TRANSLATE_NOOP("QObject", "等待触碰"),
     ":/condition/waituntiltouch.png", make<waituntiTouchModule>, nullptr},
};
} // namespace

const CatalogueRow* catalogueBegin() { return std::begin(s_rows); }

const CatalogueRow* catalogueEnd() { return std::end(s_rows); }
