#include "modules/catalogue/choosers.h"

namespace
{
struct ChooserRow {
    ChooserKind kind;
    int number;
    Chooser chooser;
};

constexpr char s_white[] = "color:white;";
constexpr ChooserEntries::Kind s_words = ChooserEntries::Words;
constexpr ChooserEntries::Kind s_pictures = ChooserEntries::Pictures;

// Meant: the condition choosers look pressed as they look at rest; the design has no picture for
// it.
constexpr ChooserStyle s_conditionStyle = {":/port_nol_60x60.png", ":/port_nol_60x60.png", 32,
                                           s_white};
// Meant: the blank in the names, which is the resources' own spelling.
constexpr ChooserStyle s_soundStyle = {":/voice/voice_bg_nol_60x60 .png",
                                       ":/voice/voice_bg_pre_60x60 .png", 0, ""};
constexpr ChooserStyle s_symbolStyle = {":/expression/expression_bg_nol_60x60.png",
                                        ":/expression/expression_bg_pre_60x60.png", 0, ""};

constexpr PopUpForm s_speedForm = {":/param_item_bg_220x92.png", 40, 3, 75, 20, 0, 0, 0};
constexpr PopUpForm s_motorPortForm = {":/param_item_bg_290x92.png", 0, 4, 70, 20, 0, 0, 0};
constexpr PopUpForm s_conditionForm = {":/bg_150x92.png", 32, 2, 70, 20, 0, 0, ConditionOffset};
constexpr PopUpForm s_sensorPortForm = {":/bg_220x162.png", 0, 3, 70, 20, 70, 0, 0};
constexpr PopUpForm s_sevenForm = {":/voice/voice_bg_290x22.png", 0, 4, 70, 20, 70, 0, 0};
// Meant: the second button stands one unit lower than the first; the design says so.
constexpr PopUpForm s_displayPortForm = {
    ":/expression/expression_bg_140x80.png", 0, 2, 70, 15, 0, 1, 0};

constexpr ChooserRow s_choosers[] = {
    {ChooserKind::PopUp,
     SpeedMode,
     {{s_pictures, {":/speed_slow.png", ":/speed_mid.png", ":/speed_fast.png"}},
      {":/select_speed_nol_60x60.png", ":/select_speed_pre_60x60.png", 32, ""},
      &s_speedForm}},
    {ChooserKind::PopUp,
     MotorPortMode,
     {{s_words, {"A", "B", "C", "D"}},
      {":/motor_port_nol.png", ":/motor_port_pre.png", 32, s_white},
      &s_motorPortForm}},
    {ChooserKind::PopUp,
     InfraredMode,
     {{s_pictures, {":/infread_body.png", ":/infread_nobody.png"}},
      s_conditionStyle,
      &s_conditionForm}},
    {ChooserKind::PopUp,
     SensorPortMode,
     {{s_words, {"%1"}, 1, 5},
      {":/touch_port_nol.png", ":/touch_port_pre.png", 32, s_white},
      &s_sensorPortForm}},
    {ChooserKind::PopUp,
     TouchMode,
     {{s_pictures, {":/until_touch_down_icon.png", ":/until_touch_up_icon.png"}},
      s_conditionStyle,
      &s_conditionForm}},
    {ChooserKind::PopUp,
     SevenNumbersMode,
     {{s_words, {"%1"}, 1, 7},
      {":/voice/select_voice_nol_60x60.png", ":/voice/select_voice_pre_60x60.png", 32, s_white},
      &s_sevenForm}},
    {ChooserKind::PopUp,
     DisplayPortMode,
     {{s_words, {"%1"}, 2, 2},
      {":/fuhao_port_nol.png", ":/fuhao_port_pre.png", 32, s_white},
      &s_displayPortForm}},

    {ChooserKind::Panel,
     NotesPanel,
     {{s_words, {"do (1)", "re (2)", "mi (3)", "fa (4)", "so (5)", "la (6)", "si (7)"}},
      s_symbolStyle}},
    {ChooserKind::Panel,
     ServoIdsPanel,
     {{s_words, {"ID-%1"}, 1, 18, 2},
      {":/move/servo_id_nol_60x60.png", ":/move/servo_id_pre_60x60.png", 0, ""},
      nullptr,
      true}},

    {ChooserKind::Sounds, GreetingSounds, {{s_pictures, {":/voice/1/%1.png"}, 1, 5}, s_soundStyle}},
    {ChooserKind::Sounds, AnimalSounds, {{s_pictures, {":/voice/2/%1.png"}, 1, 6}, s_soundStyle}},
    {ChooserKind::Sounds, TrafficSounds, {{s_pictures, {":/voice/3/%1.png"}, 1, 2}, s_soundStyle}},
    {ChooserKind::Sounds, MoodSounds, {{s_pictures, {":/voice/4/%1.png"}, 1, 4}, s_soundStyle}},

    {ChooserKind::Symbols,
     SignSymbols,
     {{s_pictures, {":/expression/1/%1.png"}, 0, 13}, s_symbolStyle}},
    {ChooserKind::Symbols,
     ArithmeticSymbols,
     {{s_pictures, {":/expression/2/%1.png"}, 0, 5}, s_symbolStyle}},
    {ChooserKind::Symbols,
     DigitSymbols,
     {{s_pictures, {":/expression/3/%1.png"}, 0, 10}, s_symbolStyle}},
    {ChooserKind::Symbols,
     LetterSymbols,
     {{s_pictures, {":/expression/4/%1.png"}, 0, 26}, s_symbolStyle}},
    {ChooserKind::Symbols,
     FaceSymbols,
     {{s_pictures, {":/expression/5/%1.png"}, 0, 12}, s_symbolStyle}},
};

const Chooser& named(ChooserKind p_kind, int p_number)
{
    const Chooser* found = findChooser(p_kind, p_number);
    Q_ASSERT(found);
    return *found;
}
} // namespace

const Chooser* findChooser(ChooserKind p_kind, int p_number)
{
    for (const ChooserRow& row : s_choosers) {
        if (row.kind == p_kind && row.number == p_number) {
            return &row.chooser;
        }
    }
    return nullptr;
}

QMap<int, const Chooser*> allChoosers(ChooserKind p_kind)
{
    QMap<int, const Chooser*> found;
    for (const ChooserRow& row : s_choosers) {
        if (row.kind == p_kind) {
            found.insert(row.number, &row.chooser);
        }
    }
    return found;
}

const Chooser& chooserOf(PopUpMode p_mode) { return named(ChooserKind::PopUp, p_mode); }

const Chooser& chooserOf(PanelType p_type) { return named(ChooserKind::Panel, p_type); }

const Chooser& chooserOf(SoundSet p_set) { return named(ChooserKind::Sounds, p_set); }

const Chooser& chooserOf(SymbolSet p_set) { return named(ChooserKind::Symbols, p_set); }
