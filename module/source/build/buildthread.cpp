#include "buildthread.h"

#include "volumes.h"

#include <QDeadlineTimer>
#include <QMutex>
#include <QMutexLocker>
#include <QWaitCondition>

#include <optional>
#include <thread>
#include <utility>

struct buildThread::Wait {
    QMutex mutex;
    QWaitCondition changed;
    bool ended = false;
    // The outcome of the scan under way, once it has one.
    std::optional<QString> found;
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
    m_drive.clear();
    {
        const QMutexLocker lock(&m_wait->mutex);
        if (m_wait->ended) {
            return false;
        }
        m_wait->found.reset();
    }
    // Asking a drive that doesn't answer can take longer than a user who cancels will bear, and
    // nothing can interrupt it. So the scan runs on its own and is left behind if need be.
    std::thread([volumes = m_volumes, wait = m_wait] {
        const QString root = findControllerVolume(*volumes);
        const QMutexLocker lock(&wait->mutex);
        wait->found = root;
        wait->changed.wakeAll();
    }).detach();

    const QMutexLocker lock(&m_wait->mutex);
    while (!m_wait->found && !m_wait->ended) {
        m_wait->changed.wait(&m_wait->mutex);
    }
    if (m_wait->ended) {
        return false;
    }
    m_drive = *m_wait->found;
    return !m_drive.isEmpty();
}

void buildThread::endWait()
{
    {
        const QMutexLocker lock(&m_wait->mutex);
        m_wait->ended = true;
        m_wait->changed.wakeAll();
    }
    wait();
}

void buildThread::run()
{
    m_connected = false;
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
    m_connected = true;
}

// False if the wait was ended before the pause was over.
bool buildThread::sleepUnlessEnded()
{
    const QDeadlineTimer deadline(m_pause);
    const QMutexLocker lock(&m_wait->mutex);
    while (!m_wait->ended && m_wait->changed.wait(&m_wait->mutex, deadline)) {
    }
    return !m_wait->ended;
}

bool buildThread::ended() const
{
    const QMutexLocker lock(&m_wait->mutex);
    return m_wait->ended;
}
