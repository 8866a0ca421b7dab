#include "updateservice.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

namespace
{
int freePort()
{
    // All are kept until the last is known, or the same might be given twice.
    static QVector<std::shared_ptr<QTcpServer>> s_kept;
    const auto server = std::make_shared<QTcpServer>();
    if (!server->listen(QHostAddress::LocalHost)) {
        qFatal("no port is free");
    }
    s_kept.append(server);
    const int port = server->serverPort();
    if (s_kept.size() == 4) {
        s_kept.clear();
    }
    return port;
}

QString executable(const char* p_name)
{
    const QString name = QLatin1String(p_name);
    const QString found = QStandardPaths::findExecutable(name);
    // The folder of what administrators run isn't in everybody's path.
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")})
                           : found;
}

// All paths are relative to the folder that nginx is started with: its own may hold blanks.

/** Within http { }, behind the configuration of the service. */
const char s_oddServers[] = R"(
server {
    listen 127.0.0.1:@ODD@ ssl;
    ssl_certificate server.pem;
    ssl_certificate_key server.key;
    default_type application/octet-stream;
    location /slow/ { alias service/files/; limit_rate 64k; }
    location /chunked/ {
        alias service/files/; sub_filter_types *; sub_filter no-such-text x;
    }
    location /slowchunked/ {
        alias service/files/; sub_filter_types *; sub_filter no-such-text x; limit_rate 64k;
    }
    location /compressed/ {
        alias service/files/; gzip on; gzip_types *;
    }
    location /elsewhere/ { rewrite ^/elsewhere/(.*)$ https://localhost:@PORT@/files/$1 redirect; }
    location /insecure/ { rewrite ^/insecure/(.*)$ http://127.0.0.1:@PORT@/files/$1 redirect; }
    location /round/ { return 302 https://127.0.0.1:@ODD@/round/; }
    location /broken/ { return 500; }
    location = /query/app/version { return 302 https://localhost:@PORT@/app/version$is_args$args; }
}
server {
    listen 127.0.0.1:@STRANGER@ ssl;
    ssl_certificate stranger.pem;
    ssl_certificate_key stranger.key;
    root service;
    location = /app/version { try_files /answers/$tiler_answer =404; }
}
server {
    listen 127.0.0.1:@MISNAMED@ ssl;
    ssl_certificate misnamed.pem;
    ssl_certificate_key misnamed.key;
    root service;
    location = /app/version { try_files /answers/$tiler_answer =404; }
}
)";

/** One process in the foreground, which a kill ends whole. */
const char s_main[] = R"(
daemon off;
master_process off;
pid nginx.pid;
error_log error.log;
events { }
http {
    log_format asked '$request_method $request_uri';
    access_log access.log asked;
    client_body_temp_path temp;
    proxy_temp_path temp;
    fastcgi_temp_path temp;
    uwsgi_temp_path temp;
    scgi_temp_path temp;
    include update-service.conf;
    include odd.conf;
}
)";
} // namespace

UpdateService::UpdateService()
    : m_port(freePort()),
      m_oddPort(freePort()),
      m_strangersPort(freePort()),
      m_misnamedPort(freePort())
{
    QDir().mkpath(path("service/answers"));
    QDir().mkpath(path("service/files"));
    makeCertificates();
    writeConfiguration();
    QSslConfiguration trust = QSslConfiguration::defaultConfiguration();
    trust.setCaCertificates(QSslCertificate::fromPath(path("authority.pem")));
    QSslConfiguration::setDefaultConfiguration(trust);
}

UpdateService::~UpdateService() { cut(); }

bool UpdateService::start()
{
    m_nginx.setProcessChannelMode(QProcess::ForwardedChannels);
    m_nginx.start(executable("nginx"),
                  {QStringLiteral("-p"), m_folder.path(), QStringLiteral("-e"), path("error.log"),
                   QStringLiteral("-c"), path("nginx.conf")});
    if (!m_nginx.waitForStarted()) {
        qWarning("nginx can't be started");
        return false;
    }
    const QDeadlineTimer deadline(30000);
    while (m_nginx.state() == QProcess::Running && !deadline.hasExpired()) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(m_port));
        if (socket.waitForConnected(1000)) {
            return true;
        }
        QThread::msleep(10);
    }
    qWarning("nginx doesn't answer");
    return false;
}

void UpdateService::cut()
{
    m_nginx.kill();
    m_nginx.waitForFinished();
}

void UpdateService::setAnswer(const char* p_file, const QByteArray& p_answer)
{
    writeFile(QStringLiteral("service/answers/") + QLatin1String(p_file), p_answer);
}

void UpdateService::removeAnswer(const char* p_file)
{
    QFile::remove(path("service/answers/") + QLatin1String(p_file));
}

void UpdateService::addFile(const QString& p_name, const QByteArray& p_content)
{
    writeFile(QStringLiteral("service/files/") + p_name, p_content);
}

void UpdateService::addZeros(const QString& p_name, qint64 p_size)
{
    addFile(p_name, QByteArray());
    if (!QFile(path("service/files/") + p_name).resize(p_size)) {
        qFatal("no room for a file");
    }
}

QStringList UpdateService::requests() const
{
    QFile log(path("access.log"));
    if (!log.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QString::fromUtf8(log.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString UpdateService::address(const QString& p_host, int p_port)
{
    return QStringLiteral("https://%1:%2").arg(p_host).arg(p_port);
}

QString UpdateService::oddity(const char* p_kind, const QString& p_name) const
{
    return QStringLiteral("%1/%2/%3").arg(oddBase(), QLatin1String(p_kind), p_name);
}

void UpdateService::writeFile(const QString& p_name, const QByteArray& p_content) const
{
    QFile file(m_folder.filePath(p_name));
    if (!file.open(QIODevice::WriteOnly) || file.write(p_content) != p_content.size()) {
        qFatal("a file can't be written");
    }
}

void UpdateService::openssl(const QStringList& p_arguments) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.start(executable("openssl"), p_arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) {
        qFatal("openssl: %s", process.readAllStandardError().constData());
    }
}

void UpdateService::makeCertificate(const char* p_name, const char* p_names,
                                    const char* p_authority) const
{
    const QString name = QLatin1String(p_name);
    QStringList arguments{
        QStringLiteral("req"),         QStringLiteral("-x509"),
        QStringLiteral("-newkey"),     QStringLiteral("ec"),
        QStringLiteral("-pkeyopt"),    QStringLiteral("ec_paramgen_curve:prime256v1"),
        QStringLiteral("-nodes"),      QStringLiteral("-days"),
        QStringLiteral("2"),           QStringLiteral("-subj"),
        QStringLiteral("/CN=") + name, QStringLiteral("-keyout"),
        name + QStringLiteral(".key"), QStringLiteral("-out"),
        name + QStringLiteral(".pem")};
    if (*p_names) {
        arguments << QStringLiteral("-addext")
                  << QStringLiteral("subjectAltName=") + QLatin1String(p_names)
                  << QStringLiteral("-addext") << QStringLiteral("basicConstraints=CA:FALSE");
    }
    if (*p_authority) {
        const QString authority = QLatin1String(p_authority);
        arguments << QStringLiteral("-CA") << authority + QStringLiteral(".pem")
                  << QStringLiteral("-CAkey") << authority + QStringLiteral(".key");
    }
    openssl(arguments);
}

void UpdateService::makeCertificates() const
{
    const char names[] = "IP:127.0.0.1,DNS:localhost";
    makeCertificate("authority", "", "");
    makeCertificate("server", names, "authority");
    makeCertificate("stranger", names, "");
    makeCertificate("misnamed", "DNS:elsewhere.example", "authority");
}

void UpdateService::writeConfiguration() const
{
    QFile file(QStringLiteral(UPDATE_SERVICE_CONF));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the configuration of the service is missing");
    }
    QByteArray service = file.readAll();
    service.replace("@LISTEN@", "127.0.0.1:" + QByteArray::number(m_port))
        .replace("@NAME@", "localhost")
        .replace("@CERTIFICATE@", "server.pem")
        .replace("@KEY@", "server.key")
        .replace("@FOLDER@", "service");
    writeFile(QStringLiteral("update-service.conf"), service);
    writeFile(QStringLiteral("odd.conf"),
              QByteArray(s_oddServers)
                  .replace("@PORT@", QByteArray::number(m_port))
                  .replace("@ODD@", QByteArray::number(m_oddPort))
                  .replace("@STRANGER@", QByteArray::number(m_strangersPort))
                  .replace("@MISNAMED@", QByteArray::number(m_misnamedPort)));
    writeFile(QStringLiteral("nginx.conf"), s_main);
}
