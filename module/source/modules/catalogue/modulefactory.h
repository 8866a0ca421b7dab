#pragma once

#include <QString>

class supermodule;

/** A new block of the class that the type selects; null for a type without a class. */
supermodule* createModule(int p_id, const QString& p_imagePath, const QString& p_pressedPath,
                          const QString& p_text);

/** A new block with its connectors, made from the record of its type; null for an unknown type. */
supermodule* createKnownModule(int p_id);

/** The same where an unknown type is a programming error: that stops the program. */
supermodule* createModuleFromId(int p_id);
