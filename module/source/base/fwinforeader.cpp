#include "base/fwinforeader.h"

#include <QFile>

FwInfoReader::FwInfoReader(QObject* p_parent) : QObject(p_parent) {}

bool FwInfoReader::read(const QString& p_path)
{
    QFile file(p_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    file.seek(512);
    m_wasRead = true;
    m_version = file.read(4);
    file.seek(516);
    const QByteArray name = file.read(6);
    const int end = name.indexOf('\0');
    m_name = QString::fromUtf8(end < 0 ? name : name.left(end));
    return true;
}

QString FwInfoReader::versionText() const
{
    if (!m_wasRead) {
        return QString();
    }
    const auto number = [this](int p_index) {
        return p_index < m_version.size() ? static_cast<signed char>(m_version.at(p_index)) : 0;
    };
    return QStringLiteral("%1.%2.%3").arg(number(2)).arg(number(1)).arg(number(0));
}
