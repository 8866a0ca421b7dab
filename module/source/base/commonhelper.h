#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>

// Helpers that several parts of the program share. Those that need widgets are in widgethelper.h.

/** Carries signals that concern the whole program. Main thread only. */
class CommonHelper : public QObject
{
    Q_OBJECT

public:
    /** The one object, made at the first request. It lives to the end of the process. */
    static CommonHelper* instance();

signals:
    void controllerTypeChanged(int p_type);

private:
    CommonHelper() = default;
    Q_DISABLE_COPY(CommonHelper)
};

/**
 * A number from p_low to p_high, both included, by way of qrand(). Without a choice, p_low equal
 * to p_high or above, it is p_low and qrand() isn't called. qrand() gives 31 bits, so of a wider
 * range only the lower part comes up.
 */
int randomNumber(int p_low, int p_high);

/** So many random digits and letters, by way of qrand(); empty for a length under 1. */
QString randomString(int p_length);

/** The object in a JSON file. Empty if there is no such file or if it holds anything else. */
QJsonObject readJson(const QString& p_path);

/** Writes an object to a JSON file, in place. A file that can't be opened stays as it is. */
void writeJson(const QJsonObject& p_object, const QString& p_path);

/**
 * Writes a text to a file as Latin-1, in place; what Latin-1 doesn't have becomes a question mark.
 * A file that can't be opened stays as it is.
 */
void writeText(const QString& p_text, const QString& p_path);

/** The elements of an array; one that is no string gives an empty text. */
QStringList toStringList(const QJsonArray& p_array);

/**
 * Compares versions such as "1.1.2" number by number: 1 if p_a is newer, -1 if p_b is, 0 only for
 * equal texts. What is no number counts as 0. If one begins with the numbers of the other the
 * longer one is newer, and of as many numbers p_a is: "1.02" and "1.2" are each newer than the
 * other.
 */
int compareVersions(const QString& p_a, const QString& p_b);
