#pragma once

#include "base/fwinforeader.h"

#include <QDialog>
#include <QString>

class HttpDownload;
class QCheckBox;
class QLabel;
class QNetworkAccessManager;
class QNetworkReply;
class QProgressBar;
class QPushButton;
class QTimer;
class QVBoxLayout;

/**
 * Asks the update service for a newer program and newer controller firmware, and is the window that
 * shows the answer. It stays hidden unless there is something to say. A newer program is downloaded
 * when the user wants it, or must, and its installer started; then the windows are closed, with
 * their question about unsaved work. Newer firmware is downloaded silently and put beside the
 * program.
 *
 * Nothing of the network is made before the first startCheck().
 */
class UpgradeDialog : public QDialog
{
    Q_OBJECT

public:
    explicit UpgradeDialog(QWidget* p_parent = nullptr);

    /** Asks for both. What an earlier check has left in the update's folder is deleted. */
    void startCheck();
    /** Deletes the installer of an update that is done, once. */
    void removeUsedInstaller();
    /** Begins the download of an installer. An address other than of HTTPS is a failed download. */
    void download(const QString& p_remoteUrl, const QString& p_localFileName);

    void reject() override;

signals:
    /** Newer firmware lies beside the program. */
    void firmwareArrivedSignal();
    /** The user wants it on the controller now. */
    void updateFirmwareSignal();

public slots:
    void replyFinished(QNetworkReply* p_reply);
    /** Meant: without effect and connected to nothing; a slot of the design. */
    void on_readyRead() {}
    void onFwCheckReplyFinished(QNetworkReply* p_reply);
    void onDownloadProgress(qlonglong p_bytesReceived, qlonglong p_bytesTotal);
    void onDownloadFinished();
    void onFwDownloadFinished();
    void onOkButtonReleased();
    void onCancelButtonReleased();

protected:
    void closeEvent(QCloseEvent* p_event) override;

private:
    Q_DISABLE_COPY(UpgradeDialog)

    enum class Mode { Found, Checking };

    void setUpForm();
    void addNotes(QVBoxLayout& p_layout);
    void addButtons(QVBoxLayout& p_layout);
    QPushButton* makeButton(const QString& p_text, const char* p_name);
    void setMode(Mode p_mode);
    void queryProgram();
    void queryFirmware();
    void ignoreVersion();
    bool isDownloading() const;
    void stopDownload();
    void showDownloadFailure();
    void leave();

    QString m_url;
    QString m_version;
    HttpDownload* m_download = nullptr;
    QLabel* m_title = nullptr;
    QLabel* m_versionLabel = nullptr;
    QLabel* m_text = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancelButton = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_closeButton = nullptr;
    QCheckBox* m_ignore = nullptr;
    QTimer* m_retryTimer = nullptr;
    QNetworkAccessManager* m_programQueries = nullptr;
    QNetworkAccessManager* m_firmwareQueries = nullptr;
    FwInfoReader m_firmwareInfo;
    HttpDownload* m_firmwareDownload = nullptr;
    /** A download has begun whose end has not been dealt with. */
    bool m_installerDue = false;
    bool m_firmwareDue = false;
    bool m_askingAboutFirmware = false;
};
