#pragma once

#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class QFile;
class QNetworkAccessManager;

/**
 * Writes what an address has to a file, piece by piece as it arrives, so that the size of it
 * doesn't matter. One transfer at a time; redirects are followed, but not from HTTPS to HTTP.
 *
 * Meant: a transfer that fails emits finished() twice, with the error and when the reply is over;
 * the design says so, and whoever listens has to bear it.
 */
class HttpDownload : public QObject
{
    Q_OBJECT

public:
    explicit HttpDownload(QObject* p_parent = nullptr);
    ~HttpDownload() override;

    /**
     * Begins a transfer into a file, which is made anew, with its folder if need be. One that is
     * under way ends without a signal. A file that can't be made doesn't stop the transfer and is
     * no error(), but what arrives is lost; see isComplete().
     */
    void start(const QString& p_url, const QString& p_localFileName);
    /**
     * Breaks the transfer off, as an error; without one it does nothing. What has arrived stays in
     * the file.
     */
    void stop();

    bool isRunning() const { return !m_reply.isNull(); }
    /** QNetworkReply::NoError from start() until the network has an error. */
    QNetworkReply::NetworkError error() const { return m_error; }
    QString localFileName() const { return m_localFileName; }
    /**
     * Whether the latest transfer is over and the whole of it is in the file: there was no error,
     * at least a byte came, as many as were announced if that was told, and the file has as many.
     */
    bool isComplete() const { return m_complete; }

signals:
    /** p_bytesTotal is -1 as long as nobody knows. */
    void downloadProgress(qlonglong p_bytesReceived, qlonglong p_bytesTotal);
    void finished();

public slots:
    void onError(QNetworkReply::NetworkError p_error);
    void onFinished();
    void onReadyRead();

private:
    Q_DISABLE_COPY(HttpDownload)

    void forgetReply();
    void closeFile();
    bool wholeFileIsThere() const;

    QNetworkAccessManager* m_manager;
    QPointer<QNetworkReply> m_reply;
    QString m_localFileName;
    std::unique_ptr<QFile> m_file;
    QNetworkReply::NetworkError m_error = QNetworkReply::NoError;
    qint64 m_received = 0;
    bool m_complete = false;
};
