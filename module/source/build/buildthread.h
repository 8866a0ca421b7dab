#pragma once

#include <QString>
#include <QThread>

#include <memory>

class VolumeList;

/**
 * Waits for the controller to show up as a drive: scans the volumes once a second, for 60 seconds
 * at most.
 *
 * drive() and connected() tell the outcome once finished() has arrived.
 */
class buildThread : public QThread
{
    Q_OBJECT

public:
    explicit buildThread(QObject* p_parent = nullptr);
    /** Ends the wait as endWait() does. */
    ~buildThread() override;

    /** Where to look for the controller, by default systemVolumes(). Not while running. */
    void setVolumes(std::shared_ptr<VolumeList> p_volumes);
    /** The pause between two scans in milliseconds, by default 1000. Not while running. */
    void setPause(int p_milliseconds);

    /**
     * Scans the volumes once. True if one counts as the controller, and then drive() is its root;
     * otherwise drive() is empty. An ended wait finds nothing.
     */
    bool findController();

    /** Ends the thread at once and for good, even if a slow volume keeps a scan from returning. */
    void endWait();

    /** The root of the controller's volume: a drive letter, or a mount point. Empty if unknown. */
    QString drive() const;
    /** Whether the wait has ended in a controller found. */
    bool connected() const;
    /** A name for the thread's task. Meant: nothing sets or reads it; a setter of the design. */
    void setTargetName(const QString& p_name) { m_targetName = p_name; }

signals:
    /** The thread's progress, as a text for the user. */
    void stateChanged(const QString& p_state);

protected:
    void run() override;

private:
    Q_DISABLE_COPY(buildThread)

    struct Wait;

    bool sleepUnlessEnded();
    bool ended() const;
    void setConnected(bool p_connected);

    QString m_targetName;
    std::shared_ptr<VolumeList> m_volumes;
    int m_pause = 1000;
    // Shared with a scan that may outlive this object.
    std::shared_ptr<Wait> m_wait;
};
