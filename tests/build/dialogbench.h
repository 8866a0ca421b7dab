#pragma once

#include "actions/model/actionimage.h"
#include "build/builddialog.h"
#include "fakevolumes.h"

#include <QByteArray>
#include <QImage>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

/** What the dialog says. */
namespace dialogtext
{
inline const QString building = QStringLiteral("正在编译......");
inline const QString waiting = QStringLiteral("等待另一个窗口编译......");
inline const QString compileFailed = QStringLiteral("编译失败！");
inline const QString connecting = QStringLiteral("连接控制器....");
inline const QString downloaded = QStringLiteral("下载成功！");
inline const QString downloadFailed = QStringLiteral("下载失败！");
inline const QString cancel = QStringLiteral("取消");
inline const QString ok = QStringLiteral("确定");
} // namespace dialogtext

/** What a dialog shows. */
struct Shown {
    explicit Shown(const buildDialog& p_dialog);

    QString statusText() const { return status->text(); }
    QString buttonText() const { return button->text(); }
    /** Why a compile failed; empty while nothing is said about it. */
    QString reasonText() const { return reason->isVisible() ? reason->text() : QString(); }
    /** "compiling", "done", "failed", or empty when there is no icon. */
    QString iconName() const;
    /** Waits until there is nothing left to cancel, and compares what it says then. */
    void verifyEnd(const QString& p_status, const QString& p_icon) const;
    /** Presses the button, and sees that this closes the dialog. */
    void verifyButtonCloses() const;

    QLabel* title;
    QLabel* status;
    QPushButton* button;
    QLabel* icon;
    QLabel* reason;
    QProgressBar* progress;
};

/**
 * An installation beside the test program with a compiler that a test writes as a shell script,
 * two controllers, and a dialog wired up as the main window does it.
 */
class DialogBench
{
public:
    DialogBench();
    ~DialogBench();

    /** Makes a script the compiler. It runs in the makefile's folder. */
    void setCompiler(const QByteArray& p_script);
    /** A script for setCompiler() that links the seven bytes "program". */
    static QByteArray linking();
    /** What is written behind a linked program: the actions and the trailer. */
    static constexpr int appendedSize = 57536;

    /** The folder of the makefile, and a file in it. */
    QString makeFolder() const;
    QString inMakeFolder(const QString& p_name) const;
    /** The compiled file of a program. */
    QString compiledFile(const QString& p_name) const;
    QString firmwareFile() const;
    /** The first controller's folder, and a file on it. */
    QString controller() const { return m_controller.path(); }
    QString onController(const QString& p_name) const { return m_controller.filePath(p_name); }
    QString secondController() const { return m_second.path(); }

    FakeVolumes& volumes() { return *m_volumes; }
    /** Sets what a dialog that is made from now on finds. */
    void setVolumes(const FakeVolumes::Finder& p_finder);
    void setVolumes(const std::vector<QString>& p_roots);

    /** The pause between two looks of a dialog that is made from now on, by default 0. */
    void setPause(int p_milliseconds) { m_pause = p_milliseconds; }

    std::unique_ptr<buildDialog> makeDialog();
    /** The paths that a dialog has handed over to be completed. */
    QStringList finishedFiles() const { return m_finishedFiles; }

    /** Runs a build, and some work while the dialog is open; closes it if the work didn't. */
    static void build(buildDialog& p_dialog, const QString& p_name, int p_taskCount,
                      const std::function<void()>& p_work, const QString& p_source = QString());
    /** The same in a dialog of the bench's own, which stays until the next one. */
    void build(const std::function<void()>& p_work) { build(QString(), p_work); }
    void build(const QString& p_source, const std::function<void()>& p_work);
    void updateFirmware(const std::function<void()>& p_work);
    static void updateFirmware(buildDialog& p_dialog, const std::function<void()>& p_work);
    buildDialog& dialog() const { return *m_dialog; }
    Shown shown() const { return Shown(*m_dialog); }
    /** Builds until the dialog says something, and closes it. */
    void buildUntil(const QString& p_status, const QString& p_source = QString());
    /** Builds a program without tasks until the dialog says that it is done, and closes it. */
    void buildToTheEnd(const QString& p_name, const QString& p_source = QString());

    /** Lets the event loop run until something holds. False if it doesn't within half a minute. */
    static bool runUntil(const std::function<bool()>& p_condition);

    static bool write(const QString& p_path, const QByteArray& p_content);
    /** A file's content, or a null array if there is no file. */
    static QByteArray read(const QString& p_path);

private:
    Q_DISABLE_COPY(DialogBench)

    QTemporaryDir m_controller;
    QTemporaryDir m_second;
    std::shared_ptr<FakeVolumes> m_volumes;
    ActionImage m_actions;
    QStringList m_finishedFiles;
    int m_pause = 0;
    std::unique_ptr<buildDialog> m_dialog;
};

/** The log messages of its lifetime. */
class LogKeeper
{
public:
    LogKeeper();
    ~LogKeeper();

    QStringList messages() const;

private:
    Q_DISABLE_COPY(LogKeeper)
};
