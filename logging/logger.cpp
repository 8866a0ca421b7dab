#include "logging/logger.h"

#include "logging/errorstream.h"

#include <QTextCodec>

#include <algorithm>
#include <utility>

namespace
{
template <class Appenders> bool anyTakes(const Appenders& p_appenders, LogLevel p_level)
{
    return std::any_of(p_appenders.begin(), p_appenders.end(),
                       [=](const auto& each) { return each->detailsLevel() <= p_level; });
}
template <class Appenders> void writeTo(const Appenders& p_appenders, const LogMessage& p_message)
{
    for (const auto& each : p_appenders) {
        each->write(p_message);
    }
}

/**
 * Unregisters all appenders when the process ends: a text stream points to a codec, and Qt deletes
 * those. The first use of a codec, in the constructor, makes Qt's data older than this object, so
 * that it is destroyed later.
 */
class Ending
{
public:
    Ending() { QTextCodec::codecForLocale(); }
    ~Ending() { Logger::globalInstance().removeAppenders(); }

private:
    Q_DISABLE_COPY(Ending)
};
} // namespace

Logger::Logger() : m_register(std::make_shared<const Register>()), m_device(*this) {}

Logger& Logger::globalInstance()
{
    static auto* const s_logger = new Logger;
    return *s_logger;
}

std::shared_ptr<const Logger::Register> Logger::currentRegister() const
{
    const std::scoped_lock lock(m_mutex);
    return m_register;
}

void Logger::registerAppender(std::shared_ptr<AbstractAppender> p_appender,
                              const QString& p_category)
{
    static const Ending s_ending;
    const std::scoped_lock lock(m_mutex);
    auto changed = std::make_shared<Register>(*m_register);
    (p_category.isEmpty() ? changed->appenders : changed->categories[p_category])
        .push_back(std::move(p_appender));
    m_register = std::move(changed);
}

void Logger::removeAppenders()
{
    auto none = std::make_shared<const Register>();
    const std::scoped_lock lock(m_mutex);
    m_register.swap(none);
}

void Logger::write(LogLevel p_level, const LogPlace& p_place, const QString& p_text,
                   const char* p_category)
{
    const auto appenders = currentRegister();
    const bool none = appenders->appenders.empty() && appenders->categories.isEmpty();
    if (none || AbstractAppender::isWriting()) {
        writeToErrorStream(p_text + QLatin1Char('\n'));
        return;
    }
    Appenders ofCategory;
    if (!appenders->categories.isEmpty()) {
        ofCategory = appenders->categories.value(QString::fromUtf8(p_category));
    }
    if (!anyTakes(appenders->appenders, p_level) && !anyTakes(ofCategory, p_level)) {
        return;
    }
    const LogMessage message{QDateTime::currentDateTimeUtc(), p_level, p_place, p_category, p_text};
    writeTo(appenders->appenders, message);
    writeTo(ofCategory, message);
}
