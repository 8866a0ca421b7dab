#pragma once

#include "logging/abstractappender.h"
#include "logging/logdevice.h"

#include <QMap>

#include <memory>
#include <mutex>
#include <vector>

/**
 * Where all messages come together and go on to the appenders. Every function may be called from
 * any thread, and from the first to the last moment of the process.
 *
 * The appenders don't last that long: they are destroyed when main() has returned, behind the
 * static objects that are younger than the first one's registration, and later messages go to the
 * error stream. No other thread should be within write() at that moment.
 */
class Logger
{
public:
    /** Never destroyed, so that static destructors can log. */
    static Logger& globalInstance();

    /** Gives an appender the messages of one category, or with an empty one those of all. */
    void registerAppender(std::shared_ptr<AbstractAppender> p_appender,
                          const QString& p_category = QString());
    /** Unregisters all appenders. One that is just writing ends with that. */
    void removeAppenders();

    /**
     * Gives a message to each appender that takes its category and level. While there is no
     * appender at all, it goes to the error stream. A fatal message is written like others; what
     * follows from it is up to the caller.
     */
    void write(LogLevel p_level, const LogPlace& p_place, const QString& p_text,
               const char* p_category = "default");

    /** A device of the logger's own, at level Debug, for one thread at a time. */
    LogDevice& device() { return m_device; }

private:
    Q_DISABLE_COPY(Logger)

    using Appenders = std::vector<std::shared_ptr<AbstractAppender>>;
    // Who gets which message. Never changed but replaced, so that no lock is held while one writes.
    struct Register {
        Appenders appenders;
        QMap<QString, Appenders> categories;
    };

    Logger();
    ~Logger() = default;
    std::shared_ptr<const Register> currentRegister() const;

    mutable std::mutex m_mutex;
    std::shared_ptr<const Register> m_register;
    LogDevice m_device;
};
