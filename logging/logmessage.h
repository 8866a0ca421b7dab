#pragma once

#include "logging/loglevel.h"

#include <QDateTime>
#include <QString>

/** Where in the source a message comes from. Each text may be null, and is not owned. */
struct LogPlace {
    const char* file = nullptr;
    int line = 0;
    /** The full signature. */
    const char* function = nullptr;
};

/** The place where this stands. */
#define LOG_HERE (LogPlace{__FILE__, __LINE__, Q_FUNC_INFO})

/** A message on its way to the appenders. What it points to lives as long as the call. */
struct LogMessage {
    /** Of any time zone: what needs the local time, which is dear to find out, makes it of this. */
    QDateTime time;
    LogLevel level = LogLevel::Debug;
    LogPlace place;
    const char* category = "default";
    QString text;
};
