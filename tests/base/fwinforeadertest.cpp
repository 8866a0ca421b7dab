#include "base/fwinforeader.h"
#include "support/system/files.h"

#include <QTemporaryDir>
#include <QtTest>

class FwInfoReaderTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString write(const QByteArray& p_content)
    {
        const QString path = m_dir.filePath("UPDATE.bin");
        putFile(path, p_content);
        return path;
    }

private slots:
    void bothFieldsAreReadAtTheirPlaces()
    {
        const QString path =
            write(QByteArray(512, 'x') + QByteArray("\x07\x02\x01\x63", 4) + "korv-9" + "zzzz");
        FwInfoReader reader;
        QVERIFY(reader.read(path));
        QCOMPARE(reader.version(), QByteArray("\x07\x02\x01\x63", 4));
        QCOMPARE(reader.versionText(), QString("1.2.7"));
        QCOMPARE(reader.name(), QString("korv-9"));
    }

    void versionNumbersAreSigned()
    {
        FwInfoReader reader;
        QVERIFY(reader.read(write(QByteArray(512, '\0') + QByteArray("\xFF\x80\x7F\x00", 4))));
        QCOMPARE(reader.versionText(), QString("127.-128.-1"));
    }

    void aZeroByteEndsTheName()
    {
        FwInfoReader reader;
        QVERIFY(reader.read(write(QByteArray(516, '\0') + QByteArray("ab\0cd\0", 6))));
        QCOMPARE(reader.name(), QString("ab"));
    }

    void aFileThatCannotBeOpenedLeavesTheFieldsAsTheyWere()
    {
        FwInfoReader reader;
        QVERIFY(!reader.read(m_dir.filePath("none.bin")));
        QVERIFY(!reader.read(m_dir.path()));
        QVERIFY(reader.version().isEmpty());
        QVERIFY(reader.versionText().isEmpty());
        QVERIFY(reader.name().isEmpty());

        QVERIFY(reader.read(write(QByteArray(512, '\0') + QByteArray("\1\2\3\4", 4) + "abcdef")));
        QVERIFY(!reader.read(m_dir.filePath("none.bin")));
        QCOMPARE(reader.versionText(), QString("3.2.1"));
        QCOMPARE(reader.name(), QString("abcdef"));
    }

    void aShortFileGivesWhatThereIs_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QByteArray>("version");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        const auto row = [](int p_size, const QByteArray& p_version, const char* p_text,
                            const char* p_name) {
            QTest::addRow("%d bytes", p_size) << p_size << p_version << p_text << p_name;
        };
        row(0, "", "0.0.0", "");
        row(512, "", "0.0.0", "");
        row(513, "\1", "0.0.1", "");
        row(514, "\1\2", "0.2.1", "");
        row(515, "\1\2\3", "3.2.1", "");
        row(516, "\1\2\3\4", "3.2.1", "");
        row(519, "\1\2\3\4", "3.2.1", "abc");
        row(522, "\1\2\3\4", "3.2.1", "abcdef");
    }

    void aShortFileGivesWhatThereIs()
    {
        QFETCH(int, size);
        QFETCH(QByteArray, version);
        QFETCH(QString, text);
        QFETCH(QString, name);
        const QByteArray whole = QByteArray(512, 'x') + QByteArray("\1\2\3\4", 4) + "abcdef";
        FwInfoReader reader;
        QVERIFY(reader.read(write(whole.left(size))));
        QCOMPARE(reader.version(), version);
        QCOMPARE(reader.versionText(), text);
        QCOMPARE(reader.name(), name);
    }
};

QTEST_GUILESS_MAIN(FwInfoReaderTest)
#include "fwinforeadertest.moc"
