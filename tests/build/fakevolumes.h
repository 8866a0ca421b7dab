#pragma once

#include "volumes.h"

#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QWaitCondition>

#include <functional>
#include <utility>
#include <vector>

/** Volumes that a test lays out, all removable; counts the scans and can hold them up. */
class FakeVolumes : public VolumeList
{
public:
    /** What a scan finds, given its number from 1: the roots of full volumes. */
    using Finder = std::function<std::vector<QString>(int)>;

    explicit FakeVolumes(Finder p_finder) : m_finder(std::move(p_finder)) {}

    explicit FakeVolumes(std::vector<QString> p_roots)
        : FakeVolumes([roots = std::move(p_roots)](int) { return roots; })
    {
    }

    std::vector<Volume> mounted() override
    {
        const QMutexLocker lock(&m_mutex);
        ++m_scans;
        while (m_held) {
            m_released.wait(&m_mutex);
        }
        std::vector<Volume> volumes;
        for (const QString& root : m_finder(m_scans)) {
            volumes.push_back({root, true});
        }
        return volumes;
    }

    std::optional<quint64> freeBytes(const Volume&) override { return 1000; }

    int scans() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_scans;
    }

    /** Lets scans hang, as on a dead drive, until release(). */
    void hold()
    {
        const QMutexLocker lock(&m_mutex);
        m_held = true;
    }

    void release()
    {
        const QMutexLocker lock(&m_mutex);
        m_held = false;
        m_released.wakeAll();
    }

private:
    Finder m_finder;
    mutable QMutex m_mutex;
    QWaitCondition m_released;
    bool m_held = false;
    int m_scans = 0;
};
