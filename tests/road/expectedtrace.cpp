#include "expectedtrace.h"

#include <QDomDocument>
#include <QRegularExpression>
#include <QVector>

#include <cstdlib>

namespace
{
const int s_near = 300;
const int s_far = 1000;
/** A task that calls more often than this without a wait isn't heard any more. */
const int s_heardCalls = 100;
const int s_mostLines = 400;
const int s_mostBlocks = 20000;
const int s_servoSpeed = 716;
/** What no program does: for a choice that no chooser offers. */
const int s_noChoice = -1000;

int number(const QDomElement& p_block, const char* p_name)
{
    return p_block.attribute(QLatin1String(p_name)).toInt();
}

double seconds(const QDomElement& p_block, const char* p_name)
{
    return p_block.attribute(QLatin1String(p_name)).toDouble();
}

QDomElement mainBlock(const QDomDocument& p_document)
{
    QDomElement base = p_document.documentElement().firstChildElement(QStringLiteral("basenode"));
    while (!base.isNull() && number(base.firstChildElement(), "id") != 0) {
        base = base.nextSiblingElement(QStringLiteral("basenode"));
    }
    return base.firstChildElement();
}

bool asksAnalogue(int p_type) { return p_type == 306 || p_type == 308; }

/** Walks along a program and stops where nothing more can be said. */
class Follower
{
public:
    Follower(const SensorValues& p_sensors, double p_limit) : m_sensors(p_sensors), m_limit(p_limit)
    {
    }

    ExpectedTrace follow(const QDomElement& p_main)
    {
        m_trace.lines << QStringLiteral("start");
        if (chain(p_main.nextSiblingElement())) {
            m_trace.lines << QStringLiteral("end");
        }
        return m_trace;
    }

private:
    bool stop(ExpectedTrace::End p_end)
    {
        m_trace.end = p_end;
        return false;
    }

    // All of these are false when the walk is over.
    bool call(const QString& p_line)
    {
        if (++m_calls > s_heardCalls || m_trace.lines.size() >= s_mostLines) {
            return stop(m_endless ? ExpectedTrace::Endless : ExpectedTrace::Unknown);
        }
        m_trace.lines << p_line;
        return true;
    }
    bool motor(int p_port, int p_speed)
    {
        return call(QStringLiteral("motor %1 (%2) speed %3")
                        .arg(QChar('A' + p_port - 1))
                        .arg(p_port)
                        .arg(p_speed));
    }
    bool drive(int p_left, int p_right) { return motor(1, p_left) && motor(2, p_right); }
    bool wait(double p_seconds)
    {
        if (p_seconds >= 0.0005) {
            m_calls = 0;
        }
        if (!call(QString::asprintf("wait %g s", p_seconds))) {
            return false;
        }
        m_time += p_seconds;
        // Near the limit it hangs on the time that the calls take.
        return m_time < m_limit - 1 ||
               stop(m_endless ? ExpectedTrace::Endless : ExpectedTrace::Unknown);
    }
    bool driveFor(int p_left, int p_right, double p_seconds)
    {
        return drive(p_left, p_right) && wait(p_seconds) && drive(0, 0);
    }
    bool turnMotor(const QDomElement& p_block, bool p_clockwise, bool p_timed)
    {
        const int port = number(p_block, "n") + 1;
        int& speed = m_speeds[qBound(0, port, 4)];
        speed = p_clockwise ? -std::abs(speed) : std::abs(speed);
        return motor(port, speed) &&
               (!p_timed || (wait(seconds(p_block, "time")) && motor(port, 0)));
    }
    bool show(const QDomElement& p_block, int p_symbol)
    {
        return call(
            QStringLiteral("display %1 symbol %2").arg(number(p_block, "port")).arg(p_symbol));
    }
    bool dark(int p_display) { return call(QStringLiteral("display %1 custom").arg(p_display)); }
    bool sound(int p_sound) { return call(QStringLiteral("sound %1").arg(p_sound)); }

    /** Whether a block's condition keeps it waiting. */
    bool keepsWaiting(const QDomElement& p_block)
    {
        const int port = number(p_block, "port");
        const bool first = number(p_block, "bInfread") == 1;
        const bool analogue = asksAnalogue(number(p_block, "id"));
        const int value =
            analogue ? m_sensors.analogue.value(port, s_far) : m_sensors.touch.value(port);
        const QString read =
            QStringLiteral("%1 %2 -> %3")
                .arg(analogue ? QStringLiteral("analogue") : QStringLiteral("touch"))
                .arg(port)
                .arg(value);
        // Told once, for it never changes.
        if (!m_trace.lines.contains(read)) {
            m_trace.lines << read;
        }
        return analogue ? (first ? value > 500 : value < 500) : (first ? value == 0 : value != 0);
    }
    bool endlessly(const QDomElement& p_body)
    {
        m_endless = true;
        while (!p_body.isNull()) {
            const int lines = m_trace.lines.size();
            if (!chain(p_body)) {
                return false;
            }
            if (m_trace.lines.size() == lines) {
                break;
            }
        }
        return stop(ExpectedTrace::Endless);
    }

    bool chain(const QDomElement& p_first)
    {
        for (QDomElement block = p_first; !block.isNull(); block = block.nextSiblingElement()) {
            if (++m_blocks > s_mostBlocks) {
                return stop(m_endless ? ExpectedTrace::Endless : ExpectedTrace::Unknown);
            }
            if (!run(block)) {
                return false;
            }
        }
        return true;
    }

    bool run(const QDomElement& p_block)
    {
        const int type = number(p_block, "id");
        if (type >= 900) {
            return runDisplay(type, p_block);
        }
        if (type >= 800) {
            return runVoice(type, number(p_block, "n"));
        }
        return type >= 300 ? runControl(type, p_block) : runMotion(type, p_block);
    }

    bool runMotion(int p_type, const QDomElement& p_block)
    {
        const int one = m_speeds[1];
        const int two = m_speeds[2];
        switch (p_type) {
        case 100: {
            static const QVector<int> s_speeds = {30, 50, 80};
            for (int& speed : m_speeds) {
                speed = s_speeds.value(number(p_block, "n"), s_noChoice);
            }
            return true;
        }
        case 101:
            return wait(seconds(p_block, "n"));
        case 102:
            return drive(-one, two);
        case 103:
            return drive(one, -two);
        case 104:
            return driveFor(one, -two, seconds(p_block, "n"));
        case 105:
            return drive(0, 0) && motor(3, 0) && motor(4, 0);
        case 106:
            return drive(-one, -two);
        case 107:
            return call(QStringLiteral("servo %1 speed %2 position %3")
                            .arg(number(p_block, "servoId"))
                            .arg(s_servoSpeed)
                            .arg(512 - number(p_block, "angle") * 888 / 300));
        case 109:
            return drive(one, two);
        case 110:
        case 111:
        case 112:
        case 113:
            return turnMotor(p_block, p_type == 111 || p_type == 113, p_type >= 112);
        case 117:
            return motor(number(p_block, "n") + 1, 0);
        case 118:
            return driveFor(-one, two, seconds(p_block, "n"));
        case 119:
            return driveFor(-one, -two, seconds(p_block, "n"));
        case 120:
            return driveFor(one, two, seconds(p_block, "n"));
        default:
            return call(QStringLiteral("a block of type %1").arg(p_type));
        }
    }

    bool runControl(int p_type, const QDomElement& p_block)
    {
        const QDomElement body =
            p_block.firstChildElement(QStringLiteral("left")).firstChildElement();
        switch (p_type) {
        case 301:
            for (int i = number(p_block, "n"); i > 0 && !body.isNull(); --i) {
                if (!chain(body)) {
                    return false;
                }
            }
            return true;
        case 303:
            return endlessly(body);
        case 306:
        case 307:
            return !keepsWaiting(p_block) || endlessly(body);
        default:
            if (!keepsWaiting(p_block)) {
                return true;
            }
            m_endless = true;
            while (wait(0.1)) {
            }
            return false;
        }
    }

    bool runVoice(int p_type, int p_choice)
    {
        static const QVector<int> s_moods = {14, 17, 16, 15};
        static const QVector<int> s_greetings = {4, 1, 2, 3, 5};
        static const QVector<int> s_traffic = {12, 13};
        switch (p_type) {
        case 800:
            return sound(26 - p_choice);
        case 801:
            return sound(p_choice + 5);
        case 802:
            return sound(s_moods.value(p_choice - 1, s_noChoice));
        case 803:
            return sound(s_greetings.value(p_choice - 1, s_noChoice));
        default:
            return sound(s_traffic.value(p_choice - 1, s_noChoice));
        }
    }

    bool runDisplay(int p_type, const QDomElement& p_block)
    {
        static const QVector<int> s_signs = {45, 1, 2, 3, 4, 0, 46, 47, 48, 49, 50, 51, 52};
        static const QVector<int> s_sums = {5, 6, 7, 8, 4};
        const int n = number(p_block, "n");
        switch (p_type) {
        case 900:
            return show(p_block, s_signs.value(n, s_noChoice));
        case 901:
            return dark(number(p_block, "port"));
        case 902:
            return show(p_block, n + 9);
        case 903:
            return call(QStringLiteral("display 2 3 emoji %1").arg(n));
        case 904:
            return dark(2) && dark(3);
        case 905:
            return show(p_block, s_sums.value(n, s_noChoice));
        default:
            return show(p_block, n + 19);
        }
    }

    const SensorValues& m_sensors;
    const double m_limit;
    ExpectedTrace m_trace;
    int m_speeds[5] = {50, 50, 50, 50, 50};
    int m_calls = 0;
    int m_blocks = 0;
    double m_time = 0;
    bool m_endless = false;
};
} // namespace

QStringList SensorValues::arguments() const
{
    QStringList list;
    const auto append = [&list](const QString& p_kind, const QHash<int, int>& p_values) {
        for (auto it = p_values.constBegin(); it != p_values.constEnd(); ++it) {
            list << QStringLiteral("--sensor")
                 << QStringLiteral("%1:%2=%3@0").arg(p_kind).arg(it.key()).arg(it.value());
        }
    };
    append(QStringLiteral("touch"), touch);
    append(QStringLiteral("analogue"), analogue);
    return list;
}

ExpectedTrace expectedTrace(const QByteArray& p_project, const SensorValues& p_sensors,
                            double p_limit)
{
    QDomDocument document;
    document.setContent(p_project);
    return Follower(p_sensors, p_limit).follow(mainBlock(document));
}

QStringList comparableTrace(const QString& p_output)
{
    QStringList lines = p_output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.replaceInStrings(QRegularExpression(QStringLiteral("^\\[ *[0-9.]+\\] ")), QString());
    lines.replaceInStrings(QRegularExpression(QStringLiteral("^(display 2 3 emoji [0-9]+) .*$")),
                           QStringLiteral("\\1"));
    // Without the rows of dots that show what stands on a display.
    return lines.filter(QRegularExpression(QStringLiteral("[^ .#]")));
}

SensorValues valuesThatLetPass(const QByteArray& p_project)
{
    SensorValues values;
    QDomDocument document;
    document.setContent(p_project);
    const QDomNodeList blocks = document.elementsByTagName(QStringLiteral("module"));
    for (int i = 0; i < blocks.size(); ++i) {
        const QDomElement block = blocks.at(i).toElement();
        const int type = number(block, "id");
        const int port = number(block, "port");
        const bool first = number(block, "bInfread") == 1;
        if (asksAnalogue(type) && !values.analogue.contains(port)) {
            values.analogue.insert(port, first ? s_near : s_far);
        } else if ((type == 307 || type == 309) && !values.touch.contains(port)) {
            values.touch.insert(port, first ? 1 : 0);
        }
    }
    return values;
}
