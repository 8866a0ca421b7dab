#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTest>

/** All bytes of a file; "no file" where there is none that can be read. */
inline QByteArray contentOf(const QString& p_path)
{
    QFile file(p_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/** Writes a file anew; the test fails if that can't be done. */
inline void putFile(const QString& p_path, const QByteArray& p_content)
{
    QFile file(p_path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(p_content), qint64(p_content.size()));
}
