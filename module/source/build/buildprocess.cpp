#include "build/buildprocess.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <signal.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

BuildProcess::BuildProcess(QObject* p_parent) : QProcess(p_parent)
{
    setStandardOutputFile(QProcess::nullDevice());
    connect(this, &QProcess::readyReadStandardError, this, &BuildProcess::onReadError);
#ifdef Q_OS_WIN
    // A process that isn't suspended could start others before it is in the job.
    setCreateProcessArgumentsModifier(
        [](CreateProcessArguments* p_arguments) { p_arguments->flags |= CREATE_SUSPENDED; });
    connect(this, &QProcess::stateChanged, this, [this](QProcess::ProcessState p_state) {
        if (p_state == QProcess::Running) {
            joinJob();
        }
    });
#endif
}

BuildProcess::~BuildProcess()
{
    endNow();
#ifdef Q_OS_WIN
    if (m_job != nullptr) {
        CloseHandle(m_job);
    }
#endif
}

QByteArray BuildProcess::keptError()
{
    onReadError();
    return m_keptError;
}

void BuildProcess::endNow()
{
    if (state() == QProcess::Starting) {
        waitForStarted();
    }
    if (state() == QProcess::Running) {
        killAll();
        waitForFinished(30000);
    }
    waitForFinished(-1);
}

void BuildProcess::onReadError()
{
    // All of it is read, since a full pipe would stop the compiler.
    const QByteArray bytes = readAllStandardError();
    m_keptError.append(bytes.left(keptErrorSize - m_keptError.size()));
}

#ifdef Q_OS_UNIX

void BuildProcess::setupChildProcess()
{
    setpgid(0, 0);
#ifdef Q_OS_LINUX
    // A make whose window was killed would compile on, while the next one's has the kit. Asked to
    // end, it ends what it has started, too.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
}

void BuildProcess::killAll()
{
    const auto group = static_cast<pid_t>(processId());
    // The group 0 would be our own.
    if (group > 0) {
        ::kill(-group, SIGKILL);
    }
    kill();
}

#endif

#ifdef Q_OS_WIN

void BuildProcess::joinJob()
{
    const Q_PID information = pid();
    m_job = CreateJobObjectW(nullptr, nullptr);
    if (m_job != nullptr) {
        AssignProcessToJobObject(m_job, information->hProcess);
    }
    ResumeThread(information->hThread);
}

void BuildProcess::killAll()
{
    if (m_job != nullptr) {
        TerminateJobObject(m_job, 1);
    }
    kill();
}

#endif
