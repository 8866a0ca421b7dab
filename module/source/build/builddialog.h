#pragma once

#include "build/buildprocess.h"
#include "build/buildthread.h"

#include <QDialog>
#include <QLockFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;
class VolumeList;

/**
 * The window that compiles the generated program, or takes the firmware beside the program, waits
 * for the controller and copies the file onto it.
 *
 * A dialog serves for one run. Closing it in any way ends the work at once: the compiler and what
 * it has started are killed, the wait for the controller is over, and nothing more is written.
 */
class buildDialog : public QDialog
{
    Q_OBJECT

public:
    explicit buildDialog(QWidget* p_parent = nullptr);
    ~buildDialog() override;

    /** What completes a compiled file, given its path, before it goes to the controller. */
    void setFinishProgramFile(std::function<void(const QString&)> p_finish);
    /** Where to look for the controller, by default systemVolumes(). */
    void setVolumes(std::shared_ptr<VolumeList> p_volumes);
    /** The pause between two looks for the controller in milliseconds, by default 1000. */
    void setPause(int p_milliseconds);

    /**
     * Writes and compiles a generated source, and downloads the result under a name without
     * extension. Task count: how many tasks the program has, 0 for none. Returns when the dialog is
     * closed. While another window of this installation compiles, this one waits and says so.
     * Whatever keeps the source from being compiled is told in words.
     */
    void startBuild(const QString& p_name, int p_taskCount, const QString& p_source);

    /** Downloads the firmware beside the program. Returns when the dialog is closed. */
    void startFirmwareUpdate();

    /**
     * The compiler's messages about the generated source, each in the form line, column and
     * message. Empty before a failed compile.
     */
    QStringList compilerMessages() const;

    /** Copies the file to the controller, over one of the same name. True if the copy succeeded. */
    bool copyToController();

public slots:
    void OnBuildEnd(int p_exitCode, QProcess::ExitStatus p_exitStatus);
    /** Meant: without effect and connected to nothing; a slot of the design. */
    void OnReadOutput();
    void OnStateChanged(const QString& p_state);
    void OnThreadFinished();
    /** Closes the dialog, as the Escape key does. */
    void reject() override;

protected:
    void paintEvent(QPaintEvent* p_event) override;
    void closeEvent(QCloseEvent* p_event) override;

private:
    Q_DISABLE_COPY(buildDialog)

    struct Form {
        QLabel* title = nullptr;
        QLabel* status = nullptr;
        QPushButton* button = nullptr;
        QLabel* icon = nullptr;
        // Shows the state as computer, cable and robot.
        QLabel* scene = nullptr;
        // Why a compile failed, where that can be helped; hidden until then.
        QLabel* reason = nullptr;
        QProgressBar* progress = nullptr;
    };

    void setUpForm();
    void compile();
    void onProcessError(QProcess::ProcessError p_error);
    QString missingToolsText(const QByteArray& p_messages) const;
    void showFailure(const QString& p_reason);
    void endWork();
    void logFirmwareFields() const;
    QString targetPath() const;

    std::unique_ptr<Form> ui;
    BuildProcess m_process;
    QString m_targetName;
    QString m_sourcePath;
    // What goes to the controller: the firmware, or this window's own copy of the program.
    QString m_copyPath;
    QTemporaryDir m_ownFolder;
    buildThread m_thread;
    QString m_drive;
    QString m_source;
    QString m_errorText;
    std::function<void(const QString&)> m_finishProgramFile;
    QLockFile m_lock;
    QTimer m_lockTimer;
    bool m_workEnded = false;
};
