#pragma once

#include <cstdint>

/**
 * What blocks ask of the canvas that shows them: to raise the choosers in the palette. The view
 * implements it and publishes itself with setModuleHost() for as long as it lives.
 */
class ModuleHost
{
public:
    virtual ~ModuleHost() = default;
    virtual void raiseNumKeyboard(uint32_t p_numberOption) = 0;
    virtual void raiseVoice(int p_map) = 0;
    virtual void raiseExpression(int p_map) = 0;
    virtual void raisePanel(int p_panelType, int p_paramId) = 0;
};

/** The canvas in charge; null when there is none. */
ModuleHost* moduleHost();
void setModuleHost(ModuleHost* p_host);
