#pragma once

#include "logging/logmessage.h"

#include <QString>

#include <vector>

/**
 * The look of a line in the log. "%{name}" stands for one of these; other text stands for itself,
 * and a backslash with an n for a newline:
 *
 *  time      when it was written, as "HH:mm:ss.zzz" or, with "%{time}{pattern}", by a date pattern
 *  type      the level's name; Type in capitals; typeOne and TypeOne its first letter alone
 *  File      the source file's path; file its name alone
 *  line      the line in it
 *  Function  the function's signature; function its name alone
 *  message   the text
 *  category  the category
 *  pid       the process
 *  appname   the application's name
 *  threadid  the thread
 *
 * A width of up to four digits may stand behind a colon: "%{type:7}" fills up with blanks in front,
 * "%{type:-7}" behind. An unknown name stands for itself, too. A message is taken as it is: nothing
 * that looks like a format in it means anything.
 */
class MessageFormat
{
public:
    explicit MessageFormat(const QString& p_text);

    const QString& text() const { return m_text; }
    /** The line of a message, written by the calling thread. */
    QString expanded(const LogMessage& p_message) const;

private:
    using Value = QString (*)(const LogMessage& p_message, const QString& p_pattern);
    struct Piece {
        /** The text as it stands, where there is no value; else a date pattern. */
        QString text;
        Value value = nullptr;
        int width = 0;
    };
    struct Key {
        const char* name;
        Value value;
    };
    static const Key s_keys[];
    static Value valueOf(const QString& p_name);
    /** Takes a text apart. Within a date pattern p_clock is that pattern's piece, else null. */
    void addPieces(const QString& p_text, const Piece* p_clock);
    void addText(const QString& p_text, const Piece* p_clock);

    QString m_text;
    std::vector<Piece> m_pieces;
};
