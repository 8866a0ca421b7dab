#include "logging/logsetup.h"

#include "logging/consoleappender.h"
#include "logging/fileappender.h"
#include "logging/logger.h"
#include "logging/messageroute.h"

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

void setUpLog(const QString& p_level)
{
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/log"));
    folder.mkpath(QStringLiteral("."));
    const QString path = folder.filePath(QStringLiteral("app-log.txt"));
    QFile::remove(path);

    auto file = std::make_shared<FileAppender>(path);
    file->setDetailsLevel(p_level.isEmpty() ? QStringLiteral("info") : p_level);
    file->setFormat(QStringLiteral("[%{type:-7}] <%{function}> %{message}\n"));
    auto console = std::make_shared<ConsoleAppender>();
    console->setFormat(file->format());
    Logger::globalInstance().registerAppender(std::move(file));
    Logger::globalInstance().registerAppender(std::move(console));

#ifdef Q_OS_UNIX
    // Whoever read the error stream may be gone; that must not end the program.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    // Some systems turn debug messages off for all programs. The appenders' levels decide here,
    // and whoever sets QT_LOGGING_RULES.
    QLoggingCategory::setFilterRules(QStringLiteral("default=true"));
    // Ends with the process, before the appenders go and the libraries that they need.
    static const MessageRoute s_route;
}
