#pragma once

#include <QString>

class supermodule;

/** A new block of the class that the type selects; null for a type without a class. */
supermodule* createModule(int p_id, const QString& p_imagePath, const QString& p_pressedPath,
                          const QString& p_text);

/**
 * A new block with its connectors, made from the record of its type. A type without a record is
 * a programming error and stops the program. Null for a record whose class can't be built.
 */
supermodule* createModuleFromId(int p_id);
