#pragma once

#include <QElapsedTimer>
#include <QVector>

#include <algorithm>
#include <ctime>

/** Times of one operation, in milliseconds; each figure is 0 when there are none. */
class Samples
{
public:
    /** Runs and times something once. */
    template <class Work> void take(Work p_work)
    {
        QElapsedTimer clock;
        const double busyBefore = busyMilliseconds();
        clock.start();
        p_work();
        m_times.append(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        m_busy.append(busyMilliseconds() - busyBefore);
    }
    double median() const { return medianOf(m_times); }
    double worst() const
    {
        return m_times.isEmpty() ? 0 : *std::max_element(m_times.begin(), m_times.end());
    }
    /** Median of the processor's time, which other programs on the machine hardly touch. */
    double medianBusy() const { return medianOf(m_busy); }
    double worstBusy() const
    {
        return m_busy.isEmpty() ? 0 : *std::max_element(m_busy.begin(), m_busy.end());
    }

private:
    static double busyMilliseconds()
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

    QVector<double> m_times;
    QVector<double> m_busy;
};
