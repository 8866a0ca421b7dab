#pragma once

#include "base/volumes.h"

#include <QString>

#include <condition_variable>
#include <functional>
#include <mutex>
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
        std::unique_lock lock(m_mutex);
        ++m_scans;
        m_released.wait(lock, [this] { return !m_held; });
        std::vector<Volume> volumes;
        for (const QString& root : m_finder(m_scans)) {
            volumes.push_back({root, true});
        }
        return volumes;
    }

    std::optional<quint64> freeBytes(const Volume&) override { return 1000; }

    int scans() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_scans;
    }

    /** Lets scans hang, as on a dead drive, until release(). */
    void hold()
    {
        const std::scoped_lock lock(m_mutex);
        m_held = true;
    }

    void release()
    {
        const std::scoped_lock lock(m_mutex);
        m_held = false;
        m_released.notify_all();
    }

private:
    Finder m_finder;
    mutable std::mutex m_mutex;
    std::condition_variable m_released;
    bool m_held = false;
    int m_scans = 0;
};
