#pragma once

#include <QElapsedTimer>
#include <QVector>

#include <algorithm>
#include <ctime>

/** Milliseconds that something took. */
struct Times {
    double clock = 0;
    /** Processor time of this thread, which other programs on the machine hardly touch. */
    double processor = 0;
};

/** Times of one operation; each figure is 0 when there are none. */
class Samples
{
public:
    /** Runs and times something once. */
    template <class Work> void take(Work p_work)
    {
        QElapsedTimer clock;
        const double before = processorMilliseconds();
        clock.start();
        p_work();
        const double elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        append({elapsed, processorMilliseconds() - before});
    }
    void append(const Times& p_times)
    {
        m_clock.append(p_times.clock);
        m_processor.append(p_times.processor);
    }
    int count() const { return m_clock.size(); }
    Times median() const { return {medianOf(m_clock), medianOf(m_processor)}; }
    Times worst() const { return {worstOf(m_clock), worstOf(m_processor)}; }

private:
    static double processorMilliseconds()
    {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
    }
    static double medianOf(QVector<double> p_values)
    {
        if (p_values.isEmpty()) {
            return 0;
        }
        std::sort(p_values.begin(), p_values.end());
        const int half = p_values.size() / 2;
        return p_values.size() % 2 == 1 ? p_values.at(half)
                                        : (p_values.at(half - 1) + p_values.at(half)) / 2;
    }
    static double worstOf(const QVector<double>& p_values)
    {
        return p_values.isEmpty() ? 0 : *std::max_element(p_values.begin(), p_values.end());
    }

    QVector<double> m_clock;
    QVector<double> m_processor;
};
