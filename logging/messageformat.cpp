#include "logging/messageformat.h"

#include "logging/functionname.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QThread>

#include <algorithm>
#include <iterator>
#include <mutex>

namespace
{
QString fileName(const char* p_path)
{
    const QString path = QString::fromLocal8Bit(p_path);
    const int slash =
        std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return path.mid(slash + 1);
}

QString firstLetter(const LogMessage& p_message) { return levelName(p_message.level).left(1); }

QString timeText(const LogMessage& p_message, const QString& p_pattern)
{
    // The same names of days and months on every computer.
    const QString pattern = p_pattern.isEmpty() ? QStringLiteral("HH:mm:ss.zzz") : p_pattern;
    // The C library reads the time zone under a lock that the thread sanitizer doesn't see, and
    // where there is none it does so in each call.
    static std::mutex s_zone;
    const std::scoped_lock lock(s_zone);
    return QLocale::c().toString(p_message.time.toLocalTime(), pattern);
}

QString threadId()
{
    const auto id = reinterpret_cast<quintptr>(QThread::currentThreadId());
    return QStringLiteral("0x") + QString::number(id, 16);
}
} // namespace

const MessageFormat::Key MessageFormat::s_keys[] = {
    {"time", timeText},
    {"type", [](const LogMessage& m, const QString&) { return levelName(m.level); }},
    {"Type", [](const LogMessage& m, const QString&) { return levelName(m.level).toUpper(); }},
    {"typeOne", [](const LogMessage& m, const QString&) { return firstLetter(m).toLower(); }},
    {"TypeOne", [](const LogMessage& m, const QString&) { return firstLetter(m).toUpper(); }},
    {"File",
     [](const LogMessage& m, const QString&) { return QString::fromLocal8Bit(m.place.file); }},
    {"file", [](const LogMessage& m, const QString&) { return fileName(m.place.file); }},
    {"line", [](const LogMessage& m, const QString&) { return QString::number(m.place.line); }},
    {"Function",
     [](const LogMessage& m, const QString&) { return QString::fromUtf8(m.place.function); }},
    {"function",
     [](const LogMessage& m, const QString&) { return shortFunctionName(m.place.function); }},
    {"message", [](const LogMessage& m, const QString&) { return m.text; }},
    {"category", [](const LogMessage& m, const QString&) { return QString::fromUtf8(m.category); }},
    {"pid", [](const LogMessage&,
               const QString&) { return QString::number(QCoreApplication::applicationPid()); }},
    {"appname",
     [](const LogMessage&, const QString&) { return QCoreApplication::applicationName(); }},
    {"threadid", [](const LogMessage&, const QString&) { return threadId(); }},
};

MessageFormat::Value MessageFormat::valueOf(const QString& p_name)
{
    const auto* const key = std::find_if(std::begin(s_keys), std::end(s_keys), [&](const Key& k) {
        return p_name == QLatin1String(k.name);
    });
    return key == std::end(s_keys) ? nullptr : key->value;
}

MessageFormat::MessageFormat(const QString& p_text) : m_text(p_text) { addPieces(p_text, nullptr); }

void MessageFormat::addPieces(const QString& p_text, const Piece* p_clock)
{
    static const QRegularExpression s_placeholder(
        QStringLiteral("%\\{([A-Za-z]+)(?::(-?[0-9]{1,4}))?\\}"));
    // A placeholder within a date pattern doesn't end it.
    static const QRegularExpression s_pattern(QStringLiteral("\\{((?:%\\{[^{}]*\\}|[^}])*+)\\}"));
    int end = 0;
    int from = 0;
    for (auto match = s_placeholder.match(p_text); match.hasMatch();
         match = s_placeholder.match(p_text, from)) {
        from = match.capturedEnd();
        Piece piece;
        piece.value = valueOf(match.captured(1));
        if (!piece.value) {
            continue;
        }
        addText(p_text.mid(end, match.capturedStart() - end), p_clock);
        end = from;
        piece.width = match.captured(2).toInt();
        if (piece.value == timeText) {
            const auto pattern = s_pattern.match(p_text, end, QRegularExpression::NormalMatch,
                                                 QRegularExpression::AnchoredMatchOption);
            if (pattern.hasMatch()) {
                from = end = pattern.capturedEnd();
            }
            if (pattern.capturedLength(1) > 0) {
                addPieces(pattern.captured(1), &piece);
                continue;
            }
        }
        m_pieces.push_back(piece);
    }
    addText(p_text.mid(end), p_clock);
}

void MessageFormat::addText(const QString& p_text, const Piece* p_clock)
{
    if (!p_text.isEmpty()) {
        Piece piece = p_clock ? *p_clock : Piece();
        piece.text = p_text;
        if (!p_clock) {
            piece.text.replace(QLatin1String("\\n"), QLatin1String("\n"));
        }
        m_pieces.push_back(piece);
    }
}

QString MessageFormat::expanded(const LogMessage& p_message) const
{
    QString line;
    for (const Piece& piece : m_pieces) {
        if (!piece.value) {
            line += piece.text;
            continue;
        }
        const QString value = piece.value(p_message, piece.text);
        line +=
            piece.width < 0 ? value.leftJustified(-piece.width) : value.rightJustified(piece.width);
    }
    return line;
}
