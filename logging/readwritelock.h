#pragma once

#include <QReadWriteLock>

#if defined(__SANITIZE_THREAD__)
#define LOG_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define LOG_THREAD_SANITIZER
#endif
#endif
#ifdef LOG_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

/**
 * A QReadWriteLock for std::unique_lock (to write) and std::shared_lock (to read). The thread
 * sanitizer can't see into Qt, which isn't built for it, and is told here who comes after whom.
 */
class ReadWriteLock
{
public:
    ReadWriteLock() = default;

    void lock()
    {
        m_lock.lockForWrite();
        acquired();
    }
    void unlock()
    {
        releasing();
        m_lock.unlock();
    }
    void lock_shared()
    {
        m_lock.lockForRead();
        acquired();
    }
    void unlock_shared() { unlock(); }

private:
    Q_DISABLE_COPY(ReadWriteLock)

#ifdef LOG_THREAD_SANITIZER
    void acquired() { __tsan_acquire(&m_lock); }
    void releasing() { __tsan_release(&m_lock); }
#else
    static void acquired() {}
    static void releasing() {}
#endif

    QReadWriteLock m_lock;
};
