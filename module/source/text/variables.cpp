#include "text/variables.h"

#include <QCoreApplication>

namespace
{
struct KindRow {
    uint32_t key;
    const char* prefix;
    const char* caption;
    int valueType;
};

/** Named like every variable, but never counted: it is declared elsewhere. */
const uint32_t s_parameterKey = 0x2000000;
const int s_variablesPerKind = 10;

const KindRow s_kinds[] = {
    {0x1, "gi_", QT_TRANSLATE_NOOP("QObject", "整型变量"), 0},
    {0x2, "gf_", QT_TRANSLATE_NOOP("QObject", "浮点变量"), 1},
    {0x4, "ana_", QT_TRANSLATE_NOOP("QObject", "模拟变量"), 0},
    {0x8, "math_", QT_TRANSLATE_NOOP("QObject", "数字输入变量"), 0},
    {0x10, "eeprom_", QT_TRANSLATE_NOOP("QObject", "EEPROM变量"), 0},
    {0x20000, "image_", QT_TRANSLATE_NOOP("QObject", "图像变量"), 0},
    {0x40000, "voice_", QT_TRANSLATE_NOOP("QObject", "语音变量"), 0},
    {0x1000000, "ctrl_", QT_TRANSLATE_NOOP("QObject", "遥控变量"), 0},
    {0x800000, "angle_", QT_TRANSLATE_NOOP("QObject", "舵机角度变量"), 0},
    {0x20, "button_", QT_TRANSLATE_NOOP("QObject", "按钮变量"), 0},
    {0x40, "light_", QT_TRANSLATE_NOOP("QObject", "亮度变量"), 0},
    {0x80, "temper_", QT_TRANSLATE_NOOP("QObject", "温度变量"), 0},
    {0x100, "mag_", QT_TRANSLATE_NOOP("QObject", "磁敏变量"), 0},
    {0x200, "swi_", QT_TRANSLATE_NOOP("QObject", "开关变量"), 0},
    {0x400, "gray_", QT_TRANSLATE_NOOP("QObject", "灰度变量"), 0},
    {0x800, "flame_", QT_TRANSLATE_NOOP("QObject", "火焰变量"), 0},
    {0x1000, "sound_", QT_TRANSLATE_NOOP("QObject", "麦克风变量"), 0},
    {0x2000, "time_", QT_TRANSLATE_NOOP("QObject", "时间变量"), 1},
    {0x10000, "infra_", QT_TRANSLATE_NOOP("QObject", "红外测距变量"), 0},
    {0x80000, "gray5_", QT_TRANSLATE_NOOP("QObject", "5灰度变量"), 0},
    {0x100000, "pot_", QT_TRANSLATE_NOOP("QObject", "电位器变量"), 0},
    {0x200000, "ult_", QT_TRANSLATE_NOOP("QObject", "超声变量"), 0},
    {0x400000, "hum_", QT_TRANSLATE_NOOP("QObject", "湿度变量"), 0},
    {0x4000, "logic_", QT_TRANSLATE_NOOP("QObject", "逻辑变量"), 0},
    {0x8000, "ran_", QT_TRANSLATE_NOOP("QObject", "随机数变量"), 0},
    {0x2000000, "param_", QT_TRANSLATE_NOOP("QObject", "参数变量"), 1},
};

const VariableKind* kindOf(uint32_t p_key)
{
    for (const VariableKind& kind : variableKinds()) {
        if (kind.key == p_key) {
            return &kind;
        }
    }
    return nullptr;
}
} // namespace

QMap<uint32_t, QVector<int>> variableUse;

const QVector<VariableKind>& variableKinds()
{
    static const QVector<VariableKind> s_table = [] {
        QVector<VariableKind> table;
        for (const KindRow& row : s_kinds) {
            table.append({row.key, QString::fromLatin1(row.prefix),
                          QCoreApplication::translate("QObject", row.caption), row.valueType});
        }
        return table;
    }();
    return s_table;
}

void resetVariableUse()
{
    variableUse.clear();
    for (const KindRow& row : s_kinds) {
        variableUse.insert(row.key, QVector<int>(s_variablesPerKind, 0));
    }
}

QString variableTypeName(uint32_t p_key)
{
    const VariableKind* kind = kindOf(p_key);
    if (!kind) {
        return QString();
    }
    switch (kind->valueType) {
    case 0:
        return QStringLiteral("int");
    case 1:
        return QStringLiteral("float");
    default:
        return QString();
    }
}

QString variableName(uint32_t p_key, int p_index)
{
    const VariableKind* kind = kindOf(p_key);
    if (kind && p_key != s_parameterKey) {
        QVector<int>& counters = variableUse[p_key];
        if (0 <= p_index && p_index < counters.size()) {
            ++counters[p_index];
        }
    }
    return QStringLiteral("%1%2").arg(kind ? kind->prefix : QString(),
                                      QString::number(p_index + 1));
}

QString variableDeclarations()
{
    QString text;
    const QMap<uint32_t, QVector<int>> use = variableUse;
    // Over a copy, since naming a variable counts as a use of it.
    for (auto it = use.constBegin(); it != use.constEnd(); ++it) {
        for (int i = 0; i < it.value().size(); ++i) {
            if (it.value().at(i) > 0) {
                text += QStringLiteral("%1 %2 = 0;\n")
                            .arg(variableTypeName(it.key()), variableName(it.key(), i));
            }
        }
    }
    return text;
}
