#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

/** Reads the two known fields of a controller's firmware file. */
class FwInfoReader : public QObject
{
    Q_OBJECT

public:
    explicit FwInfoReader(QObject* p_parent = nullptr);

    /**
     * Reads both fields of a file. False if it can't be opened, and then the fields stay as they
     * were. A file that ends early gives as many bytes as there are.
     */
    bool read(const QString& p_path);

    /** The version bytes: 4, or fewer of a short file. Empty before the first read(). */
    QByteArray version() const { return m_version; }

    /**
     * The version as text: bytes 2, 1 and 0 as signed decimal numbers with points between them.
     * A byte that the file doesn't have counts as 0. Empty before the first read() that succeeded.
     */
    QString versionText() const;

    /** The name, which is the project id: up to 6 bytes, ended early by a zero byte. */
    QString name() const { return m_name; }

private:
    Q_DISABLE_COPY(FwInfoReader)

    bool m_wasRead = false;
    QByteArray m_version;
    QString m_name;
};
