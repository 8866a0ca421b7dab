#include "update/httpdownload.h"
#include "support/system/smalldisk.h"
#include "updateservice.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
QByteArray read(const QString& p_path)
{
    QFile file(p_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** A server that sends a text as it is to whoever asks, and hangs up in good order. */
class PlainServer : public QTcpServer
{
public:
    PlainServer(const UpdateService& p_service, const QByteArray& p_answer) : m_answer(p_answer)
    {
        QFile key(p_service.keyFile());
        if (!key.open(QIODevice::ReadOnly) || !listen(QHostAddress::LocalHost)) {
            qFatal("no server");
        }
        m_key = QSslKey(&key, QSsl::Ec);
        m_certificate = QSslCertificate::fromPath(p_service.certificateFile()).value(0);
    }

    QString url() const { return QStringLiteral("https://127.0.0.1:%1/").arg(serverPort()); }

protected:
    void incomingConnection(qintptr p_descriptor) override
    {
        auto* socket = new QSslSocket(this);
        socket->setSocketDescriptor(p_descriptor);
        socket->setPrivateKey(m_key);
        socket->setLocalCertificate(m_certificate);
        connect(socket, &QIODevice::readyRead, socket, [this, socket] {
            if (socket->readAll().contains("\r\n\r\n")) {
                socket->write(m_answer);
                socket->disconnectFromHost();
            }
        });
        socket->startServerEncryption();
    }

private:
    QByteArray m_answer;
    QSslKey m_key;
    QSslCertificate m_certificate;
};

/** A figure of this process in kilobytes, such as "VmHWM", the most memory that it ever held. */
qint64 memoryFigure(const char* p_name)
{
    for (const QByteArray& line : read(QStringLiteral("/proc/self/status")).split('\n')) {
        if (line.startsWith(p_name)) {
            return line.simplified().split(' ').value(1).toLongLong();
        }
    }
    return 0;
}
} // namespace

/** Transfers from a real server over real HTTPS, on this machine. */
class HttpDownloadTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<UpdateService> m_service;
    QTemporaryDir m_folder;
    QByteArray m_content;

    QString target() const { return m_folder.filePath(QStringLiteral("got")); }
    /** Runs a transfer to its end: until nothing of it is under way any longer. */
    static void finish(HttpDownload& p_download)
    {
        QTRY_VERIFY_WITH_TIMEOUT(!p_download.isRunning(), 60000);
    }

private slots:
    void initTestCase()
    {
        m_service = std::make_unique<UpdateService>();
        QVERIFY(m_service->start());
        for (int i = 0; m_content.size() < 160000; ++i) {
            m_content += QByteArray::number(i);
        }
        m_service->addFile(QStringLiteral("some"), m_content);
        m_service->addFile(QStringLiteral("empty"), QByteArray());
    }

    void init() { QFile::remove(target()); }

    void aFileArrivesWhole_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("with a length") << m_service->url(QStringLiteral("some"));
        QTest::newRow("without a length") << m_service->chunkedUrl(QStringLiteral("some"));
        QTest::newRow("compressed on its way") << m_service->compressedUrl(QStringLiteral("some"));
        QTest::newRow("redirected to another host")
            << m_service->redirectedUrl(QStringLiteral("some"));
        QTest::newRow("slow") << m_service->slowUrl(QStringLiteral("some"));
    }

    void aFileArrivesWhole()
    {
        QFETCH(QString, url);
        HttpDownload download;
        const QSignalSpy finished(&download, &HttpDownload::finished);
        QVERIFY(!download.isRunning());
        download.start(url, target());
        QVERIFY(download.isRunning());
        QVERIFY(!download.isComplete());
        QCOMPARE(download.localFileName(), target());
        finish(download);
        QCOMPARE(download.error(), QNetworkReply::NoError);
        QVERIFY(download.isComplete());
        QCOMPARE(finished.count(), 1);
        QVERIFY(read(target()) == m_content);
    }

    void progressTellsTheLengthOnlyWhereItIsKnown_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("known");
        QTest::newRow("with a length") << m_service->slowUrl(QStringLiteral("some")) << true;
        QTest::newRow("without") << m_service->slowChunkedUrl(QStringLiteral("some")) << false;
    }

    void progressTellsTheLengthOnlyWhereItIsKnown()
    {
        QFETCH(QString, url);
        QFETCH(bool, known);
        HttpDownload download;
        const QSignalSpy progress(&download, &HttpDownload::downloadProgress);
        download.start(url, target());
        finish(download);
        QVERIFY(progress.count() > 2);
        QCOMPARE(progress.first().at(1).toLongLong(), known ? m_content.size() : -1);
        // What has arrived is in the file as it grows, and the last figure is the whole.
        QVERIFY(progress.first().at(0).toLongLong() < m_content.size());
        QCOMPARE(progress.last().at(0).toLongLong(), m_content.size());
        QCOMPARE(progress.last().at(1).toLongLong(), m_content.size());
    }

    void whatHasArrivedIsWrittenAtOnce()
    {
        HttpDownload download;
        download.start(m_service->slowUrl(QStringLiteral("some")), target());
        QTRY_VERIFY(QFileInfo(target()).size() > 0);
        QVERIFY(download.isRunning());
        QVERIFY(QFileInfo(target()).size() < m_content.size());
    }

    void aMissingFolderIsMade()
    {
        const QString deep = m_folder.filePath(QStringLiteral("a/b/got"));
        HttpDownload download;
        download.start(m_service->url(QStringLiteral("some")), deep);
        finish(download);
        QVERIFY(download.isComplete());
        QVERIFY(read(deep) == m_content);
    }

    void anOlderLongerFileIsReplaced()
    {
        QFile file(target());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(1000000, 'o'));
        file.close();
        HttpDownload download;
        download.start(m_service->url(QStringLiteral("some")), target());
        finish(download);
        QVERIFY(read(target()) == m_content);
    }

    void aFailedTransferHasItsErrorAndFinishesTwice_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<int>("error");
        const QString name = QStringLiteral("some");
        QTest::newRow("404") << m_service->missingUrl() << int(QNetworkReply::ContentNotFoundError);
        QTest::newRow("500") << m_service->brokenUrl() << int(QNetworkReply::InternalServerError);
        QTest::newRow("nobody there") << UpdateService::closedBase() + "/files/some"
                                      << int(QNetworkReply::ConnectionRefusedError);
        QTest::newRow("a stranger's certificate") << m_service->strangersBase() + "/files/some"
                                                  << int(QNetworkReply::SslHandshakeFailedError);
        QTest::newRow("a certificate for another name")
            << m_service->misnamedBase() + "/files/some"
            << int(QNetworkReply::SslHandshakeFailedError);
        QTest::newRow("redirected out of encryption") << m_service->insecurelyRedirectedUrl(name)
                                                      << int(QNetworkReply::InsecureRedirectError);
        QTest::newRow("redirected for ever")
            << m_service->endlesslyRedirectedUrl() << int(QNetworkReply::TooManyRedirectsError);
        QTest::newRow("no address")
            << QStringLiteral("nonsense") << int(QNetworkReply::ProtocolUnknownError);
    }

    void aFailedTransferHasItsErrorAndFinishesTwice()
    {
        QFETCH(QString, url);
        QFETCH(int, error);
        HttpDownload download;
        const QSignalSpy finished(&download, &HttpDownload::finished);
        download.start(url, target());
        finish(download);
        QCOMPARE(int(download.error()), error);
        QVERIFY(!download.isComplete());
        QCOMPARE(finished.count(), 2);
        QVERIFY(!read(target()).contains(m_content.left(1000)));
    }

    void aConnectionCutInTheMiddleIsAnError_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("with a length") << m_service->slowUrl(QStringLiteral("some"));
        QTest::newRow("without") << m_service->slowChunkedUrl(QStringLiteral("some"));
    }

    void aConnectionCutInTheMiddleIsAnError()
    {
        QFETCH(QString, url);
        HttpDownload download;
        download.start(url, target());
        QTRY_VERIFY(QFileInfo(target()).size() > 0);
        m_service->cut();
        finish(download);
        QVERIFY(download.error() != QNetworkReply::NoError);
        QVERIFY(!download.isComplete());
        QVERIFY(QFileInfo(target()).size() < m_content.size());
        QVERIFY(m_service->start());
        // It can be begun anew.
        download.start(m_service->url(QStringLiteral("some")), target());
        QCOMPARE(download.error(), QNetworkReply::NoError);
        finish(download);
        QVERIFY(download.isComplete());
        QVERIFY(read(target()) == m_content);
    }

    void aLengthThatDisagreesIsNotComplete_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<bool>("complete");
        QTest::newRow("as announced") << QByteArray("Content-Length: 5") << true;
        QTest::newRow("shorter") << QByteArray("Content-Length: 9") << false;
        QTest::newRow("nothing announced") << QByteArray("Pragma: x") << true;
        QTest::newRow("compressed, shorter")
            << QByteArray("Content-Encoding: gzip\r\nContent-Length: 9") << false;
    }

    void aLengthThatDisagreesIsNotComplete()
    {
        QFETCH(QByteArray, header);
        QFETCH(bool, complete);
        const PlainServer server(*m_service, "HTTP/1.1 200 OK\r\n" + header + "\r\n\r\n12345");
        HttpDownload download;
        download.start(server.url(), target());
        finish(download);
        QCOMPARE(download.isComplete(), complete);
    }

    void anEmptyFileIsNotComplete()
    {
        HttpDownload download;
        download.start(m_service->url(QStringLiteral("empty")), target());
        finish(download);
        QCOMPARE(download.error(), QNetworkReply::NoError);
        QVERIFY(QFile::exists(target()));
        QVERIFY(!download.isComplete());
    }

    void aTargetThatCannotBeOpenedIsNoErrorButNotComplete()
    {
        // A folder of that name, with something in it.
        const QString folder = m_folder.filePath(QStringLiteral("folder"));
        QVERIFY(QDir().mkpath(folder + QStringLiteral("/inside")));
        HttpDownload download;
        const QSignalSpy finished(&download, &HttpDownload::finished);
        download.start(m_service->url(QStringLiteral("some")), folder);
        finish(download);
        QCOMPARE(download.error(), QNetworkReply::NoError);
        QCOMPARE(finished.count(), 1);
        QVERIFY(!download.isComplete());
        QVERIFY(QFileInfo(folder).isDir());
    }

    void aFullDiskIsNotComplete()
    {
        SmallDisk disk("size=64k");
        if (!disk.isMounted()) {
            QSKIP("only the administrator can mount a small disk");
        }
        HttpDownload download;
        download.start(m_service->url(QStringLiteral("some")), disk.path("got"));
        finish(download);
        QCOMPARE(download.error(), QNetworkReply::NoError);
        QVERIFY(!download.isComplete());
    }

    void aFileThatSomebodyTookAwayIsNotComplete()
    {
        HttpDownload download;
        download.start(m_service->slowUrl(QStringLiteral("some")), target());
        QTRY_VERIFY(QFileInfo(target()).size() > 0);
        QVERIFY(QFile::remove(target()));
        finish(download);
        QCOMPARE(download.error(), QNetworkReply::NoError);
        QVERIFY(!download.isComplete());
    }

    void stoppingBreaksTheTransferOffAndLeavesWhatIsThere()
    {
        HttpDownload download;
        const QSignalSpy progress(&download, &HttpDownload::downloadProgress);
        download.start(m_service->slowUrl(QStringLiteral("some")), target());
        QTRY_VERIFY(QFileInfo(target()).size() > 0);
        download.stop();
        QVERIFY(!download.isRunning());
        QCOMPARE(int(download.error()), int(QNetworkReply::OperationCanceledError));
        const qint64 there = QFileInfo(target()).size();
        QVERIFY(there > 0 && there < m_content.size());
        const int told = progress.count();
        // Nothing more comes, not even of what had arrived already.
        QCoreApplication::processEvents();
        QTest::qWait(0);
        QCOMPARE(progress.count(), told);
        QCOMPARE(QFileInfo(target()).size(), there);
        download.stop();
        QVERIFY(!download.isComplete());
    }

    void stoppingAtOnceAndWithoutATransferIsHarmless()
    {
        HttpDownload download;
        download.stop();
        QCOMPARE(download.error(), QNetworkReply::NoError);
        for (const QString& url :
             {m_service->url(QStringLiteral("some")), QStringLiteral("nonsense")}) {
            download.start(url, target());
            download.stop();
            QVERIFY(!download.isRunning());
            QCoreApplication::processEvents();
            QVERIFY(!download.isComplete());
        }
    }

    void aSecondStartEndsTheFirstWithoutASignal()
    {
        HttpDownload download;
        const QSignalSpy finished(&download, &HttpDownload::finished);
        download.start(m_service->slowUrl(QStringLiteral("some")), target());
        QTRY_VERIFY(QFileInfo(target()).size() > 0);
        download.start(m_service->url(QStringLiteral("some")), target());
        QCOMPARE(finished.count(), 0);
        QCOMPARE(download.error(), QNetworkReply::NoError);
        finish(download);
        QCOMPARE(finished.count(), 1);
        QVERIFY(download.isComplete());
        QVERIFY(read(target()) == m_content);
    }

    void aTransferMayEndWithItsOwner()
    {
        auto download = std::make_unique<HttpDownload>();
        download->start(m_service->slowUrl(QStringLiteral("some")), target());
        QTRY_VERIFY(QFileInfo(target()).size() > 0);
        download.reset();
        QCoreApplication::processEvents();
        QVERIFY(QFile::exists(target()));
    }

    void aListenerMayBeginAnewWhenATransferHasFailed()
    {
        HttpDownload download;
        bool again = false;
        connect(&download, &HttpDownload::finished, &download, [&] {
            if (!again) {
                again = true;
                download.start(m_service->url(QStringLiteral("some")), target());
            }
        });
        download.start(m_service->missingUrl(), target());
        QTRY_VERIFY(again);
        finish(download);
        QVERIFY(download.isComplete());
        QVERIFY(read(target()) == m_content);
    }

    void twoGibibytesTakeNoMemory()
    {
        const qint64 size = 2LL * 1024 * 1024 * 1024 + 1;
        m_service->addZeros(QStringLiteral("large"), size);
        // From here on the most that is held is counted anew.
        QFile peak(QStringLiteral("/proc/self/clear_refs"));
        QVERIFY(peak.open(QIODevice::WriteOnly) && peak.write("5") == 1);
        peak.close();
        const qint64 before = memoryFigure("VmRSS");
        HttpDownload download;
        download.start(m_service->url(QStringLiteral("large")), target());
        QTRY_VERIFY_WITH_TIMEOUT(!download.isRunning(), 240000);
        QCOMPARE(download.error(), QNetworkReply::NoError);
        QVERIFY(download.isComplete());
        QCOMPARE(QFileInfo(target()).size(), size);
        const qint64 grown = memoryFigure("VmHWM") - before;
        QVERIFY(before > 0);
        QVERIFY2(grown < 64 * 1024, qPrintable(QString::number(grown) + QStringLiteral(" KiB")));
        QVERIFY(QFile::remove(target()));
    }
};

QTEST_GUILESS_MAIN(HttpDownloadTest)
#include "httpdownloadtest.moc"
