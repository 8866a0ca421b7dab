#pragma once

#include "modules/catalogue/choosers.h"
#include "modules/catalogue/concretemodule.h"
#include "modules/catalogue/parametermodule.h"

#include <optional>

/** What a sound block differs in. */
struct VoiceLook {
    std::optional<SoundSet> sounds; /**< the panel and the pictures; without it, the notes */
    int (*sound)(int);              /**< from the 1-based choice to the controller's sound number */
    const char* fragment;           /**< C text */
};

/** Plays one of the controller's stored sounds; the choice is counted from 1. */
class voiceModule : public choiceModule
{
public:
    using Look = VoiceLook;
    using choiceModule::choiceModule;

    QString cCode() const override;
    void setNumberKey(int p_index) override { choose(p_index + 1); }
    void paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
               QWidget* p_widget) override;

protected:
    virtual const Look& look() const = 0;
    void createButtons() override;
};

/**
 * Sound numbers by choice; a choice outside a table is its own number. Meant: neither the moods nor
 * the greetings follow the order of their panels; the numbers are those of the controller's store.
 */
namespace voiceSounds
{
int piano(int p_choice);
int animal(int p_choice);
int mood(int p_choice);
int hello(int p_choice);
int traffic(int p_choice);
} // namespace voiceSounds

// Meant: two of the texts end without a line feed. Generated text stays byte for byte the same.

class pianoModule final : public concreteModule<pianoModule, voiceModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {std::nullopt, voiceSounds::piano, "PlaySpeech(%1);\n"};
    /**
     * Meant: of the sound blocks the piano alone takes a choice this way, too, as the design says.
     */
    void setParamIndex(int p_index) override { setNumberKey(p_index); }
};

class animalModule final : public concreteModule<animalModule, voiceModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {AnimalSounds, voiceSounds::animal, "PlaySpeech(%1);\n"};
};

class biaoqingModule final : public concreteModule<biaoqingModule, voiceModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {MoodSounds, voiceSounds::mood, "PlaySpeech(%1);"};
};

class helloModule final : public concreteModule<helloModule, voiceModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {GreetingSounds, voiceSounds::hello, "PlaySpeech(%1);"};
};

class trafficModule final : public concreteModule<trafficModule, voiceModule>
{
public:
    using concreteModule::concreteModule;
    static constexpr Look s_look = {TrafficSounds, voiceSounds::traffic, "PlaySpeech(%1);\n"};
};
