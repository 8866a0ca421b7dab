#pragma once

#include <QMap>
#include <QString>
#include <QVector>

#include <cstdint>

/**
 * A kind of variable. A variable's name is the prefix followed by its number. Its pictures stand
 * with the controls (variablepictures.h).
 */
struct VariableKind {
    uint32_t key; /**< a bit mask with one bit set */
    QString prefix;
    QString caption; /**< translated */
    int valueType;   /**< 0 integer, 1 float */
};

/** The 26 kinds in their fixed order. Built at first use, with the translator in force then. */
const QVector<VariableKind>& variableKinds();

/** How often each of the ten variables of a kind was named since the last reset. */
extern QMap<uint32_t, QVector<int>> variableUse;

/** Gives every kind ten counters at zero. */
void resetVariableUse();

/** "int" or "float"; empty for a key that no kind has. */
QString variableTypeName(uint32_t p_key);

/**
 * The name of a variable by its zero-based index, such as "gi_1". Counts one use, but for the
 * parameter kind (key 0x2000000). An unknown key gives just the number.
 */
QString variableName(uint32_t p_key, int p_index);

/** The global declarations of all variables with a use, a line each. Itself counts as a use. */
QString variableDeclarations();
