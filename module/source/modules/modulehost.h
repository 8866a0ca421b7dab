#pragma once

#include <cstdint>

/**
 * What blocks ask of the canvas that shows them: to raise the choosers in the palette, and to tell
 * that a parameter has another value. The view implements it and publishes itself with
 * setModuleHost() for as long as it lives.
 */
class ModuleHost
{
public:
    virtual ~ModuleHost() = default;
    virtual void raiseNumKeyboard(uint32_t p_numberOption) = 0;
    virtual void raiseVoice(int p_map) = 0;
    virtual void raiseExpression(int p_map) = 0;
    virtual void raisePanel(int p_panelType, int p_paramId) = 0;
    virtual void noteParameter() = 0;
};

/** The canvas in charge; null when there is none. */
ModuleHost* moduleHost();
void setModuleHost(ModuleHost* p_host);

// What is chosen there goes to focusModule; without one it is ignored.
/** Gives it a key code of the number keyboard, or the index of an icon or text. */
void giveNumberKey(int p_key);
/** Gives it the value of a panel that was opened with a parameter id. */
void givePanelValue(int p_paramId, int p_value);
