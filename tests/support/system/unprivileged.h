#pragma once

#include <QDir>
#include <QFile>

#include <unistd.h>

/**
 * An ordinary user while it lives: nothing is closed to the administrator, so a test that runs as
 * one gives its rights away for the calls under test.
 */
class Unprivileged
{
public:
    Unprivileged()
    {
        if (geteuid() == 0) {
            m_dropped = seteuid(s_nobody) == 0;
        }
    }
    ~Unprivileged()
    {
        if (m_dropped && seteuid(0) != 0) {
            qFatal("the rights didn't come back");
        }
    }
    Q_DISABLE_COPY(Unprivileged)

    /** False where the rights could not be given away. */
    static bool works()
    {
        const Unprivileged user;
        return geteuid() != 0;
    }
    /** Lets an ordinary user of any name look into a folder, but change nothing there. */
    static bool closeToChanges(const QString& p_folder)
    {
        return QFile::setPermissions(p_folder, QFile::ReadOwner | QFile::ExeOwner |
                                                   QFile::ReadGroup | QFile::ExeGroup |
                                                   QFile::ReadOther | QFile::ExeOther);
    }
    /** Lets him change it. */
    static bool openToChanges(const QString& p_folder)
    {
        return QFile::setPermissions(p_folder,
                                     QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                         QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                         QFile::ReadOther | QFile::WriteOther | QFile::ExeOther);
    }

private:
    static constexpr uid_t s_nobody = 65534;
    bool m_dropped = false;
};
