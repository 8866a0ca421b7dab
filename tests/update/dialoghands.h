#pragma once

#include "update/upgradedialog.h"

#include <QByteArray>
#include <QCheckBox>
#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

/** What an update dialog shows, and the hands that press its buttons. */
struct DialogHands {
    explicit DialogHands(const UpgradeDialog& p_dialog)
        : title(p_dialog.findChild<QLabel*>(QStringLiteral("title"))),
          version(p_dialog.findChild<QLabel*>(QStringLiteral("version"))),
          text(p_dialog.findChild<QLabel*>(QStringLiteral("text"))),
          progress(p_dialog.findChild<QProgressBar*>()),
          cancel(p_dialog.findChild<QPushButton*>(QStringLiteral("cancel"))),
          ok(p_dialog.findChild<QPushButton*>(QStringLiteral("ok"))),
          close(p_dialog.findChild<QPushButton*>(QStringLiteral("close"))),
          ignore(p_dialog.findChild<QCheckBox*>())
    {
    }

    static void press(QPushButton* p_button) { QTest::mouseClick(p_button, Qt::LeftButton); }

    QLabel* title;
    QLabel* version;
    QLabel* text;
    QProgressBar* progress;
    QPushButton* cancel;
    QPushButton* ok;
    QPushButton* close;
    QCheckBox* ignore;
};

/** An answer that offers something. */
inline QByteArray offer(const char* p_version, const QString& p_url, const char* p_update = "\"0\"")
{
    return QByteArray("{\"state\":1,\"content\":\"\xe6\x96\xb0\",\"en_content\":\"What is new\","
                      "\"ftzw_content\":\"\xe8\x88\x8a\",\"update\":") +
           p_update + ",\"appurl\":\"" + p_url.toUtf8() + "\",\"msg\":\"\",\"appversion\":\"" +
           p_version + "\"}";
}

/** A program that tells in a file how it was started: the number of its arguments and its folder.
 */
inline QByteArray installerTelling(const QString& p_file)
{
    return "#!/bin/sh\necho \"$# $(pwd)\" >>'" + QFile::encodeName(p_file) + "'\n";
}

inline QByteArray contentOf(const QString& p_path)
{
    QFile file(p_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** Runs the program's event loop until it is left: 0 as by the last window, 9 if it never is. */
inline int runUntilLeft()
{
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(9); });
    watchdog.start(30000);
    return QCoreApplication::exec();
}
