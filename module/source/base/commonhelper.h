#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

// Helpers that several parts of the program share.

/**
 * A style sheet for a button with a picture each for its plain, its hovered and its pressed state,
 * as resource paths. The text colour is one that style sheets understand.
 */
QString buttonStyleSheet(const QString& p_normal, const QString& p_hover, const QString& p_pressed,
                         const QString& p_textColour);

/** The style sheet that the program's drop-down and context menus share. */
QString menuStyleSheet();

/** The object in a JSON file. Empty if there is no such file or if it holds anything else. */
QJsonObject readJson(const QString& p_path);

/** Writes an object to a JSON file, in place. A file that can't be opened stays as it is. */
void writeJson(const QJsonObject& p_object, const QString& p_path);

/** The elements of an array; one that is no string gives an empty text. */
QStringList toStringList(const QJsonArray& p_array);
