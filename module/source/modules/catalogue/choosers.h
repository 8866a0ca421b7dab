#pragma once

#include "modules/chooser.h"

#include <QMap>

/** Modes of the pop-up, as supermodule::OnSetParam() takes them. */
enum PopUpMode : int {
    SpeedMode = 0,
    MotorPortMode = 1,
    InfraredMode = 2,
    SensorPortMode = 3,
    TouchMode = 4,
    SevenNumbersMode = 5, /**< Meant: no block opens it; modes keep their numbers */
    DisplayPortMode = 6
};

/** Panels of words, as supermodule::onSetPanel() takes them. */
enum PanelType : int { NotesPanel = 1, ServoIdsPanel = 2 };

/** Panels of sounds, as supermodule::OnSetVoice() takes them. */
enum SoundSet : int { GreetingSounds = 1, AnimalSounds = 2, TrafficSounds = 3, MoodSounds = 4 };

/** Panels of symbols, as supermodule::OnSetExpression() takes them. */
enum SymbolSet : int {
    SignSymbols = 1,
    ArithmeticSymbols = 2,
    DigitSymbols = 3,
    LetterSymbols = 4,
    FaceSymbols = 5
};

enum class ChooserKind { PopUp, Panel, Sounds, Symbols };

/** The chooser of a kind with a number of the kind's enumeration; null if there is none. */
const Chooser* findChooser(ChooserKind p_kind, int p_number);
/** All choosers of a kind by their numbers. */
QMap<int, const Chooser*> allChoosers(ChooserKind p_kind);

/** The choosers that blocks name. */
const Chooser& chooserOf(PopUpMode p_mode);
const Chooser& chooserOf(PanelType p_type);
const Chooser& chooserOf(SoundSet p_set);
const Chooser& chooserOf(SymbolSet p_set);
