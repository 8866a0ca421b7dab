#include "update/upgradedialog.h"

#include "base/config.h"
#include "base/programversion.h"
#include "base/systemlanguage.h"
#include "base/tilerlog.h"
#include "proj/controls/picturecache.h"
#include "proj/controls/widgetmover.h"
#include "proj/controls/windowshape.h"
#include "update/httpdownload.h"
#include "update/updatefiles.h"
#include "update/updateprotocol.h"
#include "update/updateserver.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace
{
constexpr int s_retryMilliseconds = 300000;

QString ignoredKey() { return QStringLiteral("app_upgrade.ignore_version"); }

QString installerDeletedKey() { return QStringLiteral("app_upgrade.installer_deleted"); }

void setPixelSize(QWidget& p_widget, int p_pixels)
{
    QFont font = p_widget.font();
    font.setPixelSize(p_pixels);
    p_widget.setFont(font);
}

QLabel* makeLabel(const char* p_name, int p_pixels)
{
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(p_name));
    setPixelSize(*label, p_pixels);
    return label;
}

void sendQuery(QNetworkAccessManager& p_manager, const char* p_id)
{
    QNetworkRequest request{QUrl(updateQuery(updateServer(), QLatin1String(p_id)))};
    request.setAttribute(QNetworkRequest::FollowRedirectsAttribute, true);
    p_manager.get(request);
}

const char s_sheet[] =
    "QLabel,QCheckBox{color:white;background-color:transparent;}"
    "QCheckBox::indicator{width:14px;height:14px;background-color:white;border-radius:3px;}"
    "QCheckBox::indicator:checked{image:url(:/upgrade_tick.png);}"
    "QScrollArea,QScrollArea QWidget{background-color:transparent;border:none;}"
    "QScrollBar:vertical{width:10px;background-color:rgba(255,255,255,20%);}"
    "QScrollBar::handle{background-color:rgba(255,255,255,70%);border-radius:5px;"
    "min-height:32px;}"
    "QPushButton{background-color:white;color:#00718a;border:none;border-radius:8px;"
    "padding:0px 22px;}"
    "QPushButton:hover{background-color:#e3f6fa;}"
    "QPushButton:pressed{background-color:#00718a;color:white;}"
    "QPushButton:disabled{background-color:rgba(255,255,255,40%);color:rgba(255,255,255,70%);}"
    "QProgressBar{border:2px solid grey;border-radius:5px;text-align:center;"
    "background-color:white;color:#043c66;}"
    "QProgressBar::chunk{background-color:rgb(0,175,204);width:20px;}";
} // namespace

UpgradeDialog::UpgradeDialog(QWidget* p_parent)
    : QDialog(p_parent, Qt::FramelessWindowHint | Qt::Tool)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setUpForm();
    setMode(Mode::Found);
    new WidgetMover(this);
}

void UpgradeDialog::setUpForm()
{
    setStyleSheet(QLatin1String(s_sheet));
    const QPixmap background = picture(QStringLiteral(":/upgrade_bg_blue.png"));
    auto* outer = new QHBoxLayout(this);
    outer->setMargin(0);
    auto* ground = new QLabel;
    ground->setObjectName(QStringLiteral("UpgradeDialog_bg"));
    ground->setPixmap(pictureFor(background, devicePixelRatioF()));
    outer->addWidget(ground);
    if (!background.isNull()) {
        setFixedSize(background.size());
        shapeWindowLikePicture(*this, background);
    }

    auto* layout = new QVBoxLayout(ground);
    layout->setContentsMargins(60, 40, 60, 60);
    m_title = makeLabel("title", 24);
    m_title->setFixedHeight(30);
    layout->addWidget(m_title);

    auto* strip = new QWidget;
    strip->setFixedHeight(30);
    auto* stripLayout = new QHBoxLayout(strip);
    stripLayout->setMargin(0);
    m_versionLabel = makeLabel("version", 20);
    stripLayout->addWidget(m_versionLabel);
    layout->addWidget(strip);
    layout->addSpacing(50);
    addNotes(*layout);
    layout->addStretch(1);

    m_progress = new QProgressBar;
    m_progress->setRange(0, 100);
    m_progress->setValue(0);
    m_progress->setMaximumHeight(20);
    setPixelSize(*m_progress, 13);
    layout->addWidget(m_progress);
    m_ignore = new QCheckBox(tr("此版本不再提示"));
    setPixelSize(*m_ignore, 14);
    layout->addWidget(m_ignore);
    addButtons(*layout);
}

void UpgradeDialog::addNotes(QVBoxLayout& p_layout)
{
    m_text = makeLabel("text", 16);
    m_text->setMinimumHeight(180);
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    // Release notes may be longer than the window.
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setMinimumHeight(180);
    scroll->setWidget(m_text);
    p_layout.addWidget(scroll);
}

void UpgradeDialog::addButtons(QVBoxLayout& p_layout)
{
    auto* row = new QHBoxLayout;
    row->addStretch(4);
    m_cancelButton = makeButton(tr("暂不更新"), "cancel");
    m_okButton = makeButton(tr("下载更新"), "ok");
    m_closeButton = makeButton(tr("关闭"), "close");
    for (QPushButton* button : {m_cancelButton, m_okButton, m_closeButton}) {
        row->addWidget(button);
    }
    row->addStretch(1);
    p_layout.addLayout(row);
    connect(m_cancelButton, &QPushButton::released, this, &UpgradeDialog::onCancelButtonReleased);
    connect(m_okButton, &QPushButton::released, this, &UpgradeDialog::onOkButtonReleased);
    connect(m_closeButton, &QPushButton::released, this, &QWidget::close);
}

QPushButton* UpgradeDialog::makeButton(const QString& p_text, const char* p_name)
{
    auto* button = new QPushButton(p_text);
    button->setObjectName(QLatin1String(p_name));
    // The window comes by itself: a key for another one presses nothing here.
    button->setAutoDefault(false);
    button->setMinimumHeight(40);
    setPixelSize(*button, 18);
    return button;
}

void UpgradeDialog::setMode(Mode p_mode)
{
    const bool found = p_mode == Mode::Found;
    m_title->setText(found ? tr("发现新版本") : tr("新版本检测"));
    m_versionLabel->setVisible(found);
    m_ignore->setVisible(found);
    m_cancelButton->setVisible(found);
    m_okButton->setVisible(found);
    m_closeButton->setVisible(!found);
    m_progress->hide();
    m_cancelButton->setEnabled(true);
    m_okButton->setEnabled(true);
}

void UpgradeDialog::startCheck()
{
    setMode(Mode::Checking);
    m_text->setText(tr("正在检测新版本..."));
    prepareUpdateFolder();
    QFile::remove(storedVersionFile());
    QFile::remove(installerFile());
    // Meant: the timer of an earlier check stays, and goes on if it runs; the design says so.
    m_retryTimer = new QTimer(this);
    m_retryTimer->setInterval(s_retryMilliseconds);
    connect(m_retryTimer, &QTimer::timeout, this, &UpgradeDialog::queryProgram);
    queryProgram();
    queryFirmware();
}

void UpgradeDialog::queryProgram()
{
    if (!m_programQueries) {
        m_programQueries = new QNetworkAccessManager(this);
        connect(m_programQueries, &QNetworkAccessManager::finished, this,
                &UpgradeDialog::replyFinished);
    }
    sendQuery(*m_programQueries, s_programId);
}

void UpgradeDialog::queryFirmware()
{
    if (!m_firmwareQueries) {
        m_firmwareQueries = new QNetworkAccessManager(this);
        connect(m_firmwareQueries, &QNetworkAccessManager::finished, this,
                &UpgradeDialog::onFwCheckReplyFinished);
    }
    sendQuery(*m_firmwareQueries, s_firmwareId);
}

void UpgradeDialog::replyFinished(QNetworkReply* p_reply)
{
    p_reply->deleteLater();
    if (p_reply->error() != QNetworkReply::NoError) {
        m_retryTimer->start();
        return;
    }
    m_retryTimer->stop();
    const std::optional<UpdateRecord> record = parseUpdateReply(p_reply->readAll());
    if (!record) {
        m_text->setText(tr("版本号检测错误"));
        return;
    }
    if (!record->isValid()) {
        return;
    }
    if (!isNewerVersion(record->appversion, programVersion())) {
        m_text->setText(tr("已经是最新版本，不需要更新"));
        return;
    }
    setMode(Mode::Found);
    m_versionLabel->setText(QStringLiteral("version:") + record->appversion);
    m_text->setText(releaseNotes(*record, systemLanguageCode()));
    m_url = record->appurl;
    m_version = record->appversion;
    if (getStringList(ignoredKey()).contains(m_version)) {
        return;
    }
    show();
    if (record->update != 0) {
        m_okButton->setEnabled(false);
        m_cancelButton->setEnabled(false);
        // One that is under way already is not begun anew by another answer.
        if (!isDownloading()) {
            download(m_url, installerFile());
        }
    }
}

void UpgradeDialog::onFwCheckReplyFinished(QNetworkReply* p_reply)
{
    p_reply->deleteLater();
    if (p_reply->error() != QNetworkReply::NoError) {
        return;
    }
    const std::optional<UpdateRecord> record = parseUpdateReply(p_reply->readAll());
    if (!record || !record->isValid()) {
        return;
    }
    const QString present = m_firmwareInfo.read(installedFirmwareFile())
                                ? m_firmwareInfo.versionText()
                                : QStringLiteral("0.0.0");
    if (!isNewerVersion(record->appversion, present) || !mayDownloadFrom(record->appurl)) {
        return;
    }
    if (!m_firmwareDownload) {
        m_firmwareDownload = new HttpDownload(this);
        connect(m_firmwareDownload, &HttpDownload::finished, this,
                &UpgradeDialog::onFwDownloadFinished);
    }
    m_firmwareDue = true;
    m_firmwareDownload->start(record->appurl, downloadedFirmwareFile());
}

void UpgradeDialog::download(const QString& p_remoteUrl, const QString& p_localFileName)
{
    qCDebug(tilerLog).noquote() << "p_rometoUrl:" << p_remoteUrl;
    qCDebug(tilerLog).noquote() << "p_localFileName:" << p_localFileName;
    if (!mayDownloadFrom(p_remoteUrl)) {
        showDownloadFailure();
        return;
    }
    if (!m_download) {
        m_download = new HttpDownload(this);
        connect(m_download, &HttpDownload::downloadProgress, this,
                &UpgradeDialog::onDownloadProgress);
        connect(m_download, &HttpDownload::finished, this, &UpgradeDialog::onDownloadFinished);
    }
    m_installerDue = true;
    m_progress->setValue(0);
    m_download->start(p_remoteUrl, p_localFileName);
}

bool UpgradeDialog::isDownloading() const { return m_download && m_download->isRunning(); }

void UpgradeDialog::stopDownload()
{
    if (isDownloading()) {
        m_download->stop();
    }
}

void UpgradeDialog::showDownloadFailure()
{
    m_text->setText(tr("下载安装包失败"));
    m_progress->hide();
}

void UpgradeDialog::onDownloadProgress(qlonglong p_bytesReceived, qlonglong p_bytesTotal)
{
    m_progress->show();
    qCDebug(tilerLog) << "bytesReceived:" << p_bytesReceived;
    qCDebug(tilerLog) << "bytesTotal:" << p_bytesTotal;
    // Where the length isn't known yet, 0 or -1, the quotient is nothing that an int can hold, and
    // the bar stays as it is, as it does with any value out of its range.
    if (p_bytesTotal > 0) {
        m_progress->setValue(static_cast<int>(p_bytesReceived * 100.0 / p_bytesTotal));
    }
}

void UpgradeDialog::onDownloadFinished()
{
    if (!m_download) {
        return;
    }
    // Somebody else's folder was no place to download to. Between the two times that a failed
    // transfer finishes, it tells its progress once more and so shows the bar again.
    if (m_download->error() != QNetworkReply::NoError || !m_download->isComplete() ||
        !prepareUpdateFolder()) {
        m_installerDue = false;
        showDownloadFailure();
        return;
    }
    if (!std::exchange(m_installerDue, false)) {
        return;
    }
    m_progress->setValue(100);
    storeUpdateVersion(m_version);
    setString(installerDeletedKey(), QStringLiteral("0"));
    save();
    if (!startInstaller()) {
        qCWarning(tilerLog).noquote() << "cannot start" << installerFile();
        showDownloadFailure();
        return;
    }
    leave();
}

void UpgradeDialog::leave()
{
    // First the windows: QCoreApplication::quit() ends all event loops, also those to come, and so
    // would answer the question about unsaved work by itself.
    QApplication::closeAllWindows();
    if (!parentWidget() || !parentWidget()->isVisible()) {
        QCoreApplication::quit();
    }
}

void UpgradeDialog::onFwDownloadFinished()
{
    if (!m_firmwareDownload || !std::exchange(m_firmwareDue, false)) {
        return;
    }
    if (m_firmwareDownload->error() != QNetworkReply::NoError ||
        !m_firmwareDownload->isComplete() || !prepareUpdateFolder()) {
        return;
    }
    installFirmware();
    emit firmwareArrivedSignal();
    // A second check may end while the question of the first one stands.
    if (m_askingAboutFirmware) {
        return;
    }
    m_askingAboutFirmware = true;
    const QMessageBox::StandardButton answer =
        QMessageBox::question(parentWidget(), tr("提示"), tr("控制器固件有更新,请更新至新的版本"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    if (answer == QMessageBox::Yes) {
        emit updateFirmwareSignal();
    }
    m_askingAboutFirmware = false;
}

void UpgradeDialog::onOkButtonReleased() { download(m_url, installerFile()); }

void UpgradeDialog::onCancelButtonReleased()
{
    if (m_ignore->isChecked() && !m_version.isEmpty()) {
        ignoreVersion();
    }
    stopDownload();
    close();
}

void UpgradeDialog::ignoreVersion()
{
    QStringList ignored = getStringList(ignoredKey());
    if (!ignored.contains(m_version)) {
        ignored.append(m_version);
        setStringList(ignoredKey(), ignored);
        save();
    }
}

void UpgradeDialog::removeUsedInstaller()
{
    // An empty text is no number and so counts as 0, too.
    if (getString(installerDeletedKey()).toInt() == 0) {
        QFile::remove(installerFile());
        setString(installerDeletedKey(), QStringLiteral("1"));
        save();
    }
}

void UpgradeDialog::reject()
{
    // The Escape key is no way around an update that must be.
    if (!isDownloading() || m_cancelButton->isEnabled()) {
        stopDownload();
        QDialog::reject();
    }
}

void UpgradeDialog::closeEvent(QCloseEvent* p_event)
{
    // An update that must be goes on behind the windows. The event is accepted in any case, or the
    // program could not be left as long as the download runs.
    if (m_cancelButton->isEnabled()) {
        stopDownload();
    }
    p_event->accept();
}
