#include "build/builddialog.h"

#include "base/fwinforeader.h"
#include "base/installpath.h"
#include "base/tilerlog.h"
#include "base/volumes.h"
#include "build/kitneeds.h"
#include "build/usermainfile.h"
#include "proj/controls/picturecache.h"
#include "proj/controls/windowshape.h"

#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>

#include <utility>

namespace
{
const char s_background[] = ":/xiazaitankuang-400x210.png";
/** Between two looks whether another window has done with the kit. */
constexpr int s_lockMilliseconds = 100;

void showPicture(QLabel& p_label, const char* p_path)
{
    p_label.setPixmap(pictureFor(picture(QLatin1String(p_path)), p_label.devicePixelRatioF()));
}
} // namespace

buildDialog::buildDialog(QWidget* p_parent)
    : QDialog(p_parent), ui(std::make_unique<Form>()), m_lock(kitLockPath())
{
    setUpForm();
    connect(ui->button, &QPushButton::clicked, this, &QWidget::close);

    m_process.setWorkingDirectory(installPath(QStringLiteral("\\gcc\\example\\build\\gcc")));
    m_process.setProgram(installPath(QStringLiteral("\\gcc\\example\\build\\gcc\\make.exe")));

    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &buildDialog::OnBuildEnd);
    connect(&m_process, &QProcess::errorOccurred, this, &buildDialog::onProcessError);
    m_lockTimer.setSingleShot(true);
    m_lockTimer.setInterval(s_lockMilliseconds);
    connect(&m_lockTimer, &QTimer::timeout, this, &buildDialog::compile);
    connect(&m_thread, &QThread::finished, this, &buildDialog::OnThreadFinished);
    connect(&m_thread, &buildThread::stateChanged, this, &buildDialog::OnStateChanged);
}

buildDialog::~buildDialog() { endWork(); }

void buildDialog::setFinishProgramFile(std::function<void(const QString&)> p_finish)
{
    m_finishProgramFile = std::move(p_finish);
}

void buildDialog::setVolumes(std::shared_ptr<VolumeList> p_volumes)
{
    m_thread.setVolumes(std::move(p_volumes));
}

void buildDialog::setPause(int p_milliseconds) { m_thread.setPause(p_milliseconds); }

void buildDialog::startBuild(const QString& p_name, int p_taskCount, const QString& p_source)
{
    m_targetName = p_name;
    m_sourcePath = installPath(QStringLiteral("\\gcc\\example\\build\\gcc\\objects\\")) + p_name +
                   QStringLiteral(".bin");
    m_errorText.clear();
    m_process.setArguments({QStringLiteral("TARGET_NAME=") + p_name,
                            QStringLiteral("USER_TASK_NUMBER=") + QString::number(p_taskCount)});

    ui->progress->show();
    ui->button->setText(tr("取消"));
    showPicture(*ui->icon, ":/xiazai-icon-30x30.png");
    m_source = p_source;
    // Its contents may be deleted by hand, and the folder along with them.
    QDir(m_process.workingDirectory()).mkdir(QStringLiteral("objects"));
    compile();
    exec();
}

void buildDialog::startFirmwareUpdate()
{
    m_targetName = QStringLiteral("UPDATE");
    m_sourcePath = installPath(QStringLiteral("/firmwares/UPDATE.bin"));
    m_copyPath = m_sourcePath;
    ui->status->setText(QString());
    ui->progress->hide();
    showPicture(*ui->scene, ":/download/connecting.png");
    repaint();
    m_thread.start();
    exec();
}

QStringList buildDialog::compilerMessages() const
{
    const QString prefix = QStringLiteral("../../../example/user_main.c:");
    QStringList messages;
    const QStringList lines = m_errorText.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (line.startsWith(prefix)) {
            messages.append(line.mid(prefix.size()));
        }
    }
    return messages;
}

bool buildDialog::copyToController()
{
    const QString target = targetPath();
    if (QFile::exists(target)) {
        QFile::remove(target);
    }
    return QFile::copy(m_copyPath, target);
}

// The exit status is left out of it: a process that has crashed has an exit code other than 0.
void buildDialog::OnBuildEnd(int p_exitCode, QProcess::ExitStatus /*p_exitStatus*/)
{
    if (m_workEnded) {
        return;
    }
    ui->progress->hide();
    const QByteArray standardError = m_process.keptError();
    if (p_exitCode == 0) {
        if (m_finishProgramFile) {
            m_finishProgramFile(m_sourcePath);
        }
        // The wait for the controller may be long, and meanwhile another window may compile a
        // program of the same name.
        m_copyPath = m_ownFolder.filePath(QStringLiteral("program.bin"));
        QFile::copy(m_sourcePath, m_copyPath);
        m_lock.unlock();
        // The status stays at compiling until the thread emits stateChanged().
        m_thread.start();
        showPicture(*ui->scene, ":/download/connecting.png");
        m_errorText = tr("编译成功！");
        repaint();
        qCDebug(tilerLog).noquote() << QString::fromUtf8(standardError);
        return;
    }
    // As a C string: up to the first NUL.
    m_errorText = QString::fromUtf8(standardError.constData());
    qCDebug(tilerLog).noquote() << m_errorText;
    m_lock.unlock();
    showFailure(missingToolsText(standardError));
}

void buildDialog::OnReadOutput() {}

void buildDialog::OnStateChanged(const QString& p_state)
{
    if (!m_workEnded) {
        ui->status->setText(p_state);
    }
}

void buildDialog::OnThreadFinished()
{
    // finished() may have been queued already when the dialog was closed.
    if (m_workEnded) {
        return;
    }
    logFirmwareFields();
    // Meant: overwrites the thread's own text of a failure, which only the icon then tells; the
    // design has this order.
    ui->status->setText(tr("连接控制器...."));
    if (m_thread.connected()) {
        m_drive = m_thread.drive();
        showPicture(*ui->scene, ":/download/sending.png");
        repaint();
        if (copyToController()) {
            ui->status->setText(tr("下载成功！"));
            showPicture(*ui->icon, ":/xiazaiwancheng-icon-30x30.png");
            showPicture(*ui->scene, ":/download/done.png");
        } else {
            ui->status->setText(tr("下载失败！"));
            showPicture(*ui->scene, ":/download/copy-failed.png");
        }
    } else {
        showPicture(*ui->icon, ":/cuowu-icon-30x30.png");
        showPicture(*ui->scene, ":/download/connect-failed.png");
    }
    ui->button->setText(tr("确定"));
}

void buildDialog::reject()
{
    endWork();
    QDialog::reject();
}

void buildDialog::paintEvent(QPaintEvent* p_event)
{
    {
        QPainter painter(this);
        const QPixmap background = picture(QLatin1String(s_background));
        drawPicture(&painter, background.rect(), background);
    }
    QDialog::paintEvent(p_event);
}

void buildDialog::closeEvent(QCloseEvent* p_event)
{
    endWork();
    QDialog::closeEvent(p_event);
}

void buildDialog::setUpForm()
{
    resize(400, 210);
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    shapeWindowLikePicture(*this, picture(QLatin1String(s_background)));
    setWindowTitle(QStringLiteral("Dialog"));

    // Around what is told: the computer and the robot stand at the sides, the cable below the
    // words.
    ui->scene = new QLabel(this);
    ui->scene->setObjectName(QStringLiteral("scene"));
    ui->scene->setGeometry(12, 48, 376, 92);

    ui->title = new QLabel(tr("下载"), this);
    ui->title->setObjectName(QStringLiteral("title"));
    ui->title->setGeometry(15, 9, 370, 26);
    ui->title->setAlignment(Qt::AlignCenter);
    ui->title->setStyleSheet(
        QStringLiteral("border-image: url(:/guanyutankuang-biaotikuang-240x22.png);\n"
                       "color:#FFFFFF"));

    ui->status = new QLabel(this);
    ui->status->setObjectName(QStringLiteral("status"));
    ui->status->setGeometry(135, 79, 211, 31);
    QFont statusFont = ui->status->font();
    statusFont.setPixelSize(16);
    ui->status->setFont(statusFont);

    ui->button = new QPushButton(tr("取消"), this);
    ui->button->setObjectName(QStringLiteral("button"));
    ui->button->setGeometry(290, 140, 76, 30);
    ui->button->setStyleSheet(
        QStringLiteral("QPushButton{ border-image:url(:/quxiao-nol-76x30.png); color:#33bfd6; } "
                       "QPushButton:pressed{ border-image:url(:/quxiao-pre-76x30.png); "
                       "color:#FFFFFF;}"));

    ui->icon = new QLabel(this);
    ui->icon->setObjectName(QStringLiteral("icon"));
    ui->icon->setGeometry(89, 80, 30, 30);

    ui->reason = new QLabel(this);
    ui->reason->setObjectName(QStringLiteral("reason"));
    ui->reason->setGeometry(50, 116, 230, 86);
    ui->reason->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    ui->reason->setWordWrap(true);
    ui->reason->setTextFormat(Qt::PlainText);
    // What it says to install can be copied into a terminal.
    ui->reason->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont reasonFont = ui->reason->font();
    reasonFont.setPixelSize(12);
    ui->reason->setFont(reasonFont);
    ui->reason->hide();

    ui->progress = new QProgressBar(this);
    ui->progress->setObjectName(QStringLiteral("progress"));
    ui->progress->setGeometry(50, 145, 221, 20);
    ui->progress->setMaximum(0);
    ui->progress->setValue(-1);
    ui->progress->setStyleSheet(QStringLiteral(
        "QProgressBar{border:0px;background-color:#e5e5e5;} "
        "QProgressBar::chunk{background:qlineargradient(spread:pad,x1:0,y1:0,x2:1,y2:0,stop:0 "
        "#e5e5e5,stop:1 #ff9668);}"));
}

void buildDialog::compile()
{
    // A lock that can't be made at all stops nobody: what keeps it from being made, a missing or
    // read-only folder, then fails the compile.
    if (!m_lock.tryLock() && m_lock.error() == QLockFile::LockFailedError) {
        ui->status->setText(tr("等待另一个窗口编译......"));
        showPicture(*ui->scene, ":/download/waiting.png");
        m_lockTimer.start();
        return;
    }
    ui->status->setText(tr("正在编译......"));
    showPicture(*ui->scene, ":/download/compiling.png");
    if (!writeUserMain(m_source)) {
        m_lock.unlock();
        showFailure(tr("无法写入 gcc/example/user_main.c，请检查磁盘空间和文件权限"));
        return;
    }
    m_process.start(QIODevice::ReadWrite);
}

void buildDialog::onProcessError(QProcess::ProcessError p_error)
{
    // All other errors end in OnBuildEnd().
    if (p_error == QProcess::FailedToStart && !m_workEnded) {
        m_lock.unlock();
        showFailure(tr("无法启动 gcc/example/build/gcc/make.exe，请重新解压程序"));
    }
}

QString buildDialog::missingToolsText(const QByteArray& p_messages) const
{
    QStringList names;
    QStringList packages;
    for (const MissingTool& tool : missingTools(p_messages)) {
        names.append(tool.name);
        packages.append(tool.packages);
    }
    return names.isEmpty()
               ? QString()
               : tr("缺少 %1，请安装：\n%2")
                     .arg(names.join(QStringLiteral(", ")),
                          QStringLiteral("sudo apt install ") + packages.join(QLatin1Char(' ')));
}

void buildDialog::showFailure(const QString& p_reason)
{
    ui->progress->hide();
    // Meant: the English entry of this text says success; the translations are kept word for word.
    ui->status->setText(tr("编译失败！"));
    showPicture(*ui->scene, ":/download/compile-failed.png");
    if (!p_reason.isEmpty()) {
        ui->reason->setText(p_reason);
        ui->reason->show();
        qCWarning(tilerLog).noquote() << p_reason;
    }
}

// Queued calls of the slots may be pending, hence the flag besides the disconnections.
void buildDialog::endWork()
{
    if (m_workEnded) {
        return;
    }
    m_workEnded = true;
    disconnect(&m_process, nullptr, this, nullptr);
    disconnect(&m_thread, nullptr, this, nullptr);
    m_lockTimer.stop();
    m_process.endNow();
    m_lock.unlock();
    m_thread.endWait();
}

void buildDialog::logFirmwareFields() const
{
    FwInfoReader reader;
    reader.read(m_sourcePath);
    qCDebug(tilerLog, "firmware update");
    qCDebug(tilerLog).noquote().nospace() << "    projectId: " << reader.name();
    qCDebug(tilerLog).noquote().nospace() << "    version: " << reader.versionText();
    qCDebug(tilerLog).noquote().nospace() << "    file: " << m_sourcePath;
}

QString buildDialog::targetPath() const
{
    return pathOnVolume(m_drive, m_targetName + QStringLiteral(".bin"));
}
