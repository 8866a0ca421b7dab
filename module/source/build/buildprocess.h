#pragma once

#include <QByteArray>
#include <QProcess>

/**
 * The compile process. Whatever it starts itself belongs to it and ends with it in endNow().
 *
 * Standard output is thrown away. Standard error is read as it comes, and its beginning is kept.
 */
class BuildProcess : public QProcess
{
    Q_OBJECT

public:
    /** How much of the standard error is kept: its first MiB. */
    static constexpr int keptErrorSize = 1024 * 1024;

    explicit BuildProcess(QObject* p_parent = nullptr);
    /** Ends the process as endNow() does. */
    ~BuildProcess() override;

    /** The standard error up to now, cut off at keptErrorSize. */
    QByteArray keptError();

    /** Kills the process with all that it has started, and waits for its end. */
    void endNow();

#ifdef Q_OS_UNIX
protected:
    void setupChildProcess() override;
#endif

private:
    Q_DISABLE_COPY(BuildProcess)

    void onReadError();
    void killAll();

#ifdef Q_OS_WIN
    void joinJob();

    void* m_job = nullptr;
#endif
    QByteArray m_keptError;
};
