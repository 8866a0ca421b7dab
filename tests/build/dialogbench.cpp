#include "dialogbench.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QMutex>
#include <QMutexLocker>
#include <QPixmap>
#include <QTimer>
#include <QtTest>

namespace
{

QMutex logMutex;
QStringList logMessages;

void keepMessage(QtMsgType, const QMessageLogContext&, const QString& p_message)
{
    const QMutexLocker lock(&logMutex);
    logMessages.append(p_message);
}

void whileOpen(buildDialog& p_dialog, const std::function<void()>& p_work)
{
    QTimer::singleShot(0, &p_dialog, [&p_dialog, p_work] {
        p_work();
        if (p_dialog.isVisible()) {
            p_dialog.close();
        }
    });
}

QString installation(const QString& p_name)
{
    return QCoreApplication::applicationDirPath() + '/' + p_name;
}

void removeInstallation()
{
    QDir(installation("gcc")).removeRecursively();
    QDir(installation("firmwares")).removeRecursively();
}

} // namespace

DialogBench::DialogBench()
{
    removeInstallation();
    QDir().mkpath(makeFolder() + "/objects");
    QDir().mkpath(installation("firmwares"));
    setVolumes(std::vector<QString>{controller()});
}

DialogBench::~DialogBench() { removeInstallation(); }

void DialogBench::setCompiler(const QByteArray& p_script)
{
    write(inMakeFolder("make.exe"), "#!/bin/sh\n" + p_script);
    QFile::setPermissions(inMakeFolder("make.exe"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QByteArray DialogBench::linking()
{
    return "for word in \"$@\"; do case $word in TARGET_NAME=*)\n"
           "  printf 'program' > \"objects/${word#TARGET_NAME=}.bin\";;\n"
           "esac; done\n";
}

QString DialogBench::makeFolder() const { return installation("gcc/example/build/gcc"); }

QString DialogBench::inMakeFolder(const QString& p_name) const
{
    return makeFolder() + '/' + p_name;
}

QString DialogBench::compiledFile(const QString& p_name) const
{
    return inMakeFolder("objects/" + p_name + ".bin");
}

QString DialogBench::firmwareFile() const { return installation("firmwares/UPDATE.bin"); }

void DialogBench::setVolumes(const FakeVolumes::Finder& p_finder)
{
    m_volumes = std::make_shared<FakeVolumes>(p_finder);
}

void DialogBench::setVolumes(const std::vector<QString>& p_roots)
{
    m_volumes = std::make_shared<FakeVolumes>(p_roots);
}

std::unique_ptr<buildDialog> DialogBench::makeDialog()
{
    auto dialog = std::make_unique<buildDialog>();
    dialog->setVolumes(m_volumes);
    dialog->setPause(m_pause);
    dialog->setFinishProgramFile([this](const QString& p_path) {
        m_finishedFiles.append(p_path);
        m_actions.appendTo(p_path, ActionTail::ImageAndTrailer);
    });
    return dialog;
}

void DialogBench::build(buildDialog& p_dialog, const QString& p_name, int p_taskCount,
                        const std::function<void()>& p_work, const QString& p_source)
{
    whileOpen(p_dialog, p_work);
    p_dialog.startBuild(p_name, p_taskCount, p_source);
}

void DialogBench::build(const QString& p_source, const std::function<void()>& p_work)
{
    m_dialog = makeDialog();
    build(*m_dialog, "car1", 0, p_work, p_source);
}

void DialogBench::updateFirmware(const std::function<void()>& p_work)
{
    m_dialog = makeDialog();
    updateFirmware(*m_dialog, p_work);
}

void DialogBench::updateFirmware(buildDialog& p_dialog, const std::function<void()>& p_work)
{
    whileOpen(p_dialog, p_work);
    p_dialog.startFirmwareUpdate();
}

void DialogBench::buildUntil(const QString& p_status, const QString& p_source)
{
    build(p_source, [&] {
        runUntil([&] { return shown().statusText() == p_status; });
        QCOMPARE(shown().statusText(), p_status);
    });
}

void DialogBench::buildToTheEnd(const QString& p_name, const QString& p_source)
{
    const auto work = [this] {
        QVERIFY(runUntil([this] { return shown().buttonText() == dialogtext::ok; }));
    };
    m_dialog = makeDialog();
    build(*m_dialog, p_name, 0, work, p_source);
}

bool DialogBench::runUntil(const std::function<bool()>& p_condition)
{
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (p_condition()) {
            loop.quit();
        }
    });
    poll.start(10);
    QTimer::singleShot(30000, &loop, [&loop] { loop.exit(1); });
    return loop.exec() == 0;
}

bool DialogBench::write(const QString& p_path, const QByteArray& p_content)
{
    QFile file(p_path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(p_content) == p_content.size();
}

QByteArray DialogBench::read(const QString& p_path)
{
    QFile file(p_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QByteArray();
    }
    const QByteArray content = file.readAll();
    return content.isNull() ? QByteArray("") : content;
}

Shown::Shown(const buildDialog& p_dialog)
    : title(p_dialog.findChild<QLabel*>("title")),
      status(p_dialog.findChild<QLabel*>("status")),
      button(p_dialog.findChild<QPushButton*>("button")),
      icon(p_dialog.findChild<QLabel*>("icon")),
      reason(p_dialog.findChild<QLabel*>("reason")),
      progress(p_dialog.findChild<QProgressBar*>("progress"))
{
}

QString Shown::iconName() const
{
    if (icon->pixmap() == nullptr || icon->pixmap()->isNull()) {
        return QString();
    }
    const QColor color = icon->pixmap()->toImage().pixelColor(0, 0);
    if (color == QColor(Qt::blue)) {
        return "compiling";
    }
    if (color == QColor(Qt::green)) {
        return "done";
    }
    return color == QColor(Qt::red) ? "failed" : "unknown";
}

void Shown::verifyEnd(const QString& p_status, const QString& p_icon) const
{
    QTRY_COMPARE(buttonText(), dialogtext::ok);
    QCOMPARE(statusText(), p_status);
    QCOMPARE(iconName(), p_icon);
}

void Shown::verifyButtonCloses() const
{
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!button->window()->isVisible());
}

LogKeeper::LogKeeper()
{
    const QMutexLocker lock(&logMutex);
    logMessages.clear();
    qInstallMessageHandler(keepMessage);
}

LogKeeper::~LogKeeper() { qInstallMessageHandler(nullptr); }

QStringList LogKeeper::messages() const
{
    const QMutexLocker lock(&logMutex);
    return logMessages;
}
