#include "update/httpdownload.h"

#include "base/tilerlog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QUrl>

namespace
{
/** What may wait in memory while the disk is slower than the network. */
constexpr qint64 s_bufferBytes = 1 << 20;
} // namespace

HttpDownload::HttpDownload(QObject* p_parent)
    : QObject(p_parent), m_manager(new QNetworkAccessManager(this))
{
}

HttpDownload::~HttpDownload() = default;

void HttpDownload::start(const QString& p_url, const QString& p_localFileName)
{
    if (QNetworkReply* running = m_reply) {
        forgetReply();
        if (running->error() == QNetworkReply::NoError) {
            running->abort();
        }
    }
    m_error = QNetworkReply::NoError;
    m_received = 0;
    m_complete = false;
    m_localFileName = p_localFileName;
    QDir().mkpath(QFileInfo(p_localFileName).path());
    // Another window of the program may write to a file of this name: never both to one and the
    // same.
    m_file.reset();
    QFile::remove(p_localFileName);
    m_file = std::make_unique<QFile>(p_localFileName);
    if (!m_file->open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        qCDebug(tilerLog).noquote() << "cannot write" << p_localFileName << m_file->errorString();
    }

    QNetworkRequest request{QUrl(p_url)};
    request.setAttribute(QNetworkRequest::FollowRedirectsAttribute, true);
    m_reply = m_manager->get(request);
    m_reply->setReadBufferSize(s_bufferBytes);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &HttpDownload::downloadProgress);
    connect(m_reply, &QIODevice::readyRead, this, &HttpDownload::onReadyRead);
    connect(m_reply, &QNetworkReply::finished, this, &HttpDownload::onFinished);
    connect(m_reply, &QNetworkReply::errorOccurred, this, &HttpDownload::onError);
}

void HttpDownload::stop()
{
    if (!m_reply) {
        return;
    }
    m_reply->abort();
    // The abort has ended in onFinished(), unless the reply was over without having told.
    forgetReply();
    closeFile();
}

void HttpDownload::onReadyRead()
{
    // A reply that was broken off is closed.
    if (!m_reply || !m_reply->isOpen()) {
        return;
    }
    const QByteArray data = m_reply->readAll();
    m_received += data.size();
    if (m_file && m_file->isOpen()) {
        m_file->write(data);
    }
}

void HttpDownload::onFinished()
{
    if (!m_reply) {
        return;
    }
    // With a limited buffer the last piece need not have been announced.
    onReadyRead();
    closeFile();
    m_complete = wholeFileIsThere();
    forgetReply();
    emit finished();
}

void HttpDownload::onError(QNetworkReply::NetworkError p_error)
{
    m_error = p_error;
    closeFile();
    emit finished();
}

void HttpDownload::forgetReply()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->deleteLater();
        m_reply.clear();
    }
}

void HttpDownload::closeFile()
{
    if (m_file) {
        m_file->close();
    }
}

bool HttpDownload::wholeFileIsThere() const
{
    if (m_error != QNetworkReply::NoError || m_received == 0) {
        return false;
    }
    return QFileInfo(m_localFileName).size() == m_received;
}
