#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/**
 * An update service on this machine alone: nginx with the configuration in packaging/, and an
 * authority made for it, which the test program then trusts instead of the system's. A second
 * server of it has what goes wrong on a network, and a third a certificate of a stranger's.
 */
class UpdateService
{
public:
    UpdateService();
    ~UpdateService();
    Q_DISABLE_COPY(UpdateService)

    /** Starts nginx; also again after cut(). False, and it says so, if it doesn't come up. */
    bool start();
    /** Kills nginx, whatever it is sending. */
    void cut();

    /** What answers to a query about an identifier's file, "program.json" or "firmware.json". */
    void setAnswer(const char* p_file, const QByteArray& p_answer);
    void removeAnswer(const char* p_file);
    /** Puts a file where it can be downloaded. */
    void addFile(const QString& p_name, const QByteArray& p_content);
    /** The same with a file of zeros that takes no room. */
    void addZeros(const QString& p_name, qint64 p_size);

    QString base() const { return address(QStringLiteral("127.0.0.1"), m_port); }
    /** The same server by another name. */
    QString otherBase() const { return address(QStringLiteral("localhost"), m_port); }
    /** A server with a certificate that the authority hasn't signed. */
    QString strangersBase() const { return address(QStringLiteral("127.0.0.1"), m_strangersPort); }
    /** A server with a certificate of the authority for another name. */
    QString misnamedBase() const { return address(QStringLiteral("127.0.0.1"), m_misnamedPort); }
    /** Nobody listens there. */
    static QString closedBase() { return QStringLiteral("https://127.0.0.1:1"); }

    /** A file as it is, and the ways in which the second server has it. */
    QString url(const QString& p_name) const { return base() + QStringLiteral("/files/") + p_name; }
    /** 64 KiB a second. */
    QString slowUrl(const QString& p_name) const { return oddity("slow", p_name); }
    /** Without a length. */
    QString chunkedUrl(const QString& p_name) const { return oddity("chunked", p_name); }
    QString slowChunkedUrl(const QString& p_name) const { return oddity("slowchunked", p_name); }
    /** Compressed on its way. */
    QString compressedUrl(const QString& p_name) const { return oddity("compressed", p_name); }
    /** Redirects to otherBase(). */
    QString redirectedUrl(const QString& p_name) const { return oddity("elsewhere", p_name); }
    /** Redirects to the same address without encryption. */
    QString insecurelyRedirectedUrl(const QString& p_name) const
    {
        return oddity("insecure", p_name);
    }
    /** Redirects to itself. */
    QString endlesslyRedirectedUrl() const { return oddity("round", QString()); }
    /** Answers 500. */
    QString brokenUrl() const { return oddity("broken", QString()); }
    QString missingUrl() const { return url(QStringLiteral("missing")); }
    /** The base of queries that are redirected to otherBase(), or answered by 500. */
    QString redirectingBase() const { return oddBase() + QStringLiteral("/query"); }
    QString brokenBase() const { return oddBase() + QStringLiteral("/broken"); }

    /** The certificate of the true server, and its key, for a server that a test writes. */
    QString certificateFile() const { return path("server.pem"); }
    QString keyFile() const { return path("server.key"); }

    /** What was asked of all servers since the start, such as "GET /app/version?appid=qz417". */
    QStringList requests() const;

private:
    static QString address(const QString& p_host, int p_port);
    QString oddBase() const { return address(QStringLiteral("127.0.0.1"), m_oddPort); }
    QString oddity(const char* p_kind, const QString& p_name) const;
    QString path(const char* p_name) const { return m_folder.filePath(QLatin1String(p_name)); }
    void writeFile(const QString& p_name, const QByteArray& p_content) const;
    void openssl(const QStringList& p_arguments) const;
    void makeCertificate(const char* p_name, const char* p_names, const char* p_authority) const;
    void makeCertificates() const;
    void writeConfiguration() const;

    QTemporaryDir m_folder;
    QProcess m_nginx;
    int m_port;
    int m_oddPort;
    int m_strangersPort;
    int m_misnamedPort;
};
