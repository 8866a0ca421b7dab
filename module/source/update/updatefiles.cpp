#include "update/updatefiles.h"

#include "base/commonhelper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

namespace
{
QString inUpdateFolder(const char* p_name) { return updateFolder() + QLatin1String(p_name); }
} // namespace

QString updateFolder()
{
    static const QString s_folder =
        QStandardPaths::writableLocation(QStandardPaths::TempLocation) + QStringLiteral("/tiler");
    return s_folder;
}

QString storedVersionFile() { return inUpdateFolder("/upgrade_config.json"); }

QString installerFile() { return inUpdateFolder("/app_installer.exe"); }

QString downloadedFirmwareFile() { return inUpdateFolder("/UPDATE.bin"); }

QString installedFirmwareFile()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/firmwares/UPDATE.bin");
}

bool prepareUpdateFolder()
{
    const QString folder = updateFolder();
    QDir().mkpath(folder);
    // Any user of the computer can make a folder of this name in a temporary location that all
    // share, but only its owner can change its permissions.
    const QFileInfo info(folder);
    return info.isDir() && !info.isSymLink() &&
           QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void storeUpdateVersion(const QString& p_version)
{
    writeJson({{QStringLiteral("version"), p_version}}, storedVersionFile());
}

QString storedUpdateVersion()
{
    return readJson(storedVersionFile())[QStringLiteral("version")].toString();
}

void installFirmware()
{
    const QString target = installedFirmwareFile();
    QDir().mkpath(QFileInfo(target).path());
    if (QFile::exists(target)) {
        QFile::remove(target);
    }
    QFile::copy(downloadedFirmwareFile(), target);
}

bool startInstaller()
{
    const QString installer = installerFile();
    QString folder;
#ifndef Q_OS_WIN
    QFile::setPermissions(installer, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    // It gets no arguments, so this is how it knows what to replace. Windows would keep the folder
    // from being replaced as long as the installer runs in it.
    folder = QCoreApplication::applicationDirPath();
#endif
    return QProcess::startDetached(installer, {}, folder);
}
