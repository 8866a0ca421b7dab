#include "build/buildthread.h"

#include "base/volumes.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

struct buildThread::Wait {
    // Not Qt's own, which the thread sanitizer can't see through.
    std::mutex mutex;
    std::condition_variable changed;
    bool ended = false;
    // The outcome of the scan under way, once it has one.
    std::optional<QString> found;
    QString drive;
    bool connected = false;
};

buildThread::buildThread(QObject* p_parent)
    : QThread(p_parent), m_volumes(systemVolumes()), m_wait(std::make_shared<Wait>())
{
}

buildThread::~buildThread() { endWait(); }

void buildThread::setVolumes(std::shared_ptr<VolumeList> p_volumes)
{
    m_volumes = std::move(p_volumes);
}

void buildThread::setPause(int p_milliseconds) { m_pause = p_milliseconds; }

bool buildThread::findController()
{
    {
        const std::scoped_lock lock(m_wait->mutex);
        m_wait->drive.clear();
        if (m_wait->ended) {
            return false;
        }
        m_wait->found.reset();
    }
    // Asking a drive that doesn't answer can take longer than a user who cancels will bear, and
    // nothing can interrupt it. So the scan runs on its own and is left behind if need be.
    std::thread([volumes = m_volumes, wait = m_wait] {
        const QString root = findControllerVolume(*volumes);
        const std::scoped_lock lock(wait->mutex);
        wait->found = root;
        wait->changed.notify_all();
    }).detach();

    std::unique_lock lock(m_wait->mutex);
    m_wait->changed.wait(lock, [this] { return m_wait->found || m_wait->ended; });
    if (m_wait->ended) {
        return false;
    }
    m_wait->drive = *m_wait->found;
    return !m_wait->drive.isEmpty();
}

QString buildThread::drive() const
{
    const std::scoped_lock lock(m_wait->mutex);
    return m_wait->drive;
}

bool buildThread::connected() const
{
    const std::scoped_lock lock(m_wait->mutex);
    return m_wait->connected;
}

void buildThread::setConnected(bool p_connected)
{
    const std::scoped_lock lock(m_wait->mutex);
    m_wait->connected = p_connected;
}

void buildThread::endWait()
{
    {
        const std::scoped_lock lock(m_wait->mutex);
        m_wait->ended = true;
        m_wait->changed.notify_all();
    }
    wait();
}

void buildThread::run()
{
    // The thread sanitizer doesn't see that wait() is behind all this, but that a share is given
    // up.
    const std::shared_ptr<Wait> share = m_wait;
    setConnected(false);
    emit stateChanged(tr("连接控制器...."));
    for (int pauses = 0; !findController() && pauses < 60; ++pauses) {
        if (!sleepUnlessEnded()) {
            return;
        }
    }
    if (!findController()) {
        if (!ended()) {
            emit stateChanged(tr("控制器连接失败！"));
        }
        return;
    }
    setConnected(true);
}

// False if the wait was ended before the pause was over.
bool buildThread::sleepUnlessEnded()
{
    std::unique_lock lock(m_wait->mutex);
    return !m_wait->changed.wait_for(lock, std::chrono::milliseconds(m_pause),
                                     [this] { return m_wait->ended; });
}

bool buildThread::ended() const
{
    const std::scoped_lock lock(m_wait->mutex);
    return m_wait->ended;
}
