#pragma once

#include <QString>

/** Where the program's name stands that a project file carries: the tool bar implements it. */
class ProgramNameHolder
{
public:
    virtual ~ProgramNameHolder() = default;
    virtual QString programName() const = 0;
    /** Takes any name: a project can bring in one that could not be typed. */
    virtual void setProgramName(const QString& p_name) = 0;
};
