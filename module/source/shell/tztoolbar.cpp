#include "shell/tztoolbar.h"

#include "base/config.h"
#include "base/recentfiles.h"
#include "build/builddialog.h"
#include "generator/codegenerator.h"
#include "proj/controls/stylesheets.h"
#include "shell/aboutdialog.h"

#include <QAction>
#include <QCoreApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QProcess>
#include <QPushButton>
#include <QRegExpValidator>

TzToolBar* toolBarInstance = nullptr;

namespace
{
const int s_recentShown = 11;
const int s_buttonWidth = 68;
const int s_rightGap = 10;
const int s_infoMargin = 2;
const int s_noticeMargin = 3;

// The pictures of a button's three states.
struct ToolPictures {
    const char* normal;
    const char* hover;
    const char* pressed;
};

const ToolPictures s_filePictures = {":/wenjian-nol.png", ":/wenjian-hover.png",
                                     ":/wenjian-pre.png"};
const ToolPictures s_zoomInPictures = {":/fangda-nol.png", ":/fangda-hover.png",
                                       ":/fangda-pre.png"};
const ToolPictures s_zoomNormalPictures = {":/normal_scale.png", ":/normal_scale-hover.png",
                                           ":/normal_scale-pre.png"};
const ToolPictures s_zoomOutPictures = {":/suoxiao-nol.png", ":/suoxiao-hover.png",
                                        ":/suoxiao-pre.png"};
const ToolPictures s_downloadPictures = {":/xiazai-nol.png", ":/xiazai-hover.png",
                                         ":/xiazai-pre.png"};
const ToolPictures s_recentPictures = {":/zuijin-nol.png", ":/zuijin-hover.png",
                                       ":/zuijin-pre.png"};
const ToolPictures s_codePictures = {":/daima-nol.png", ":/daima-hover.png", ":/daima-pre.png"};
const ToolPictures s_morePictures = {":/gengduo-nol.png", ":/gengduo-hover.png",
                                     ":/gengduo-pre.png"};

QString styleOf(const ToolPictures& p_pictures)
{
    return buttonStyleSheet(QString::fromLatin1(p_pictures.normal),
                            QString::fromLatin1(p_pictures.hover),
                            QString::fromLatin1(p_pictures.pressed), QStringLiteral("white"));
}

void setMenu(QPushButton& p_button, QMenu& p_menu)
{
    p_button.setMenu(&p_menu);
    // The button runs the menu in a call that lasts as long as a dialog from it, and would look
    // pressed all the while.
    QObject::connect(&p_menu, &QMenu::aboutToHide, &p_button,
                     [&p_button] { p_button.setDown(false); });
}

/** The least width, in pixels, at which a label's text takes two lines. */
int widthOfTwoLines(const QLabel& p_label)
{
    const QFontMetrics metrics = p_label.fontMetrics();
    int width = metrics.horizontalAdvance(p_label.text()) / 2;
    while (metrics.boundingRect(QRect(0, 0, width, 0), Qt::TextWordWrap, p_label.text()).height() >
           metrics.height() + metrics.lineSpacing()) {
        ++width;
    }
    return width;
}

QString firmwareTimeKey() { return QStringLiteral("fw.update_time"); }

QString firmwareNotice() { return TzToolBar::tr("控制器固件有新的版本，请更新"); }
} // namespace

TzToolBar::TzToolBar(QWidget* p_parent) : QWidget(p_parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setMargin(0);
    layout->setSpacing(0);
    m_recentMenu.setTitle(tr("最近文档"));
    m_recentMenu.setStyleSheet(menuStyleSheet());

    createFileButton();
    createZoomButtons();
    createDownloadButton();
    for (QPushButton* button :
         {m_fileButton, m_zoomInButton, m_zoomNormalButton, m_zoomOutButton, m_downloadButton}) {
        layout->addWidget(button);
    }
    setUpNameField();
    layout->addWidget(&m_nameLabel);
    layout->addWidget(&m_nameEdit);
    layout->addStretch(100);

    auto* infoArea = new QWidget(this);
    m_infoLayout = new QHBoxLayout(infoArea);
    m_infoLayout->setMargin(s_infoMargin);
    layout->addWidget(infoArea, 0, Qt::AlignRight);
    createRecentButton();
    createCodeButton();
    createMoreButton();
    for (QPushButton* button : {m_recentButton, m_codeButton, m_moreButton}) {
        layout->addWidget(button, 0, Qt::AlignRight);
    }
    // The layout keeps the more button where a resize puts it, also when a notice comes or goes.
    layout->addSpacing(s_rightGap);

    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, QColor(0, 175, 204));
    setPalette(colours);

    toolBarInstance = this;
    checkFirmwareNotice();
}

TzToolBar::~TzToolBar()
{
    if (toolBarInstance == this) {
        toolBarInstance = nullptr;
    }
    // The menus are members and go before the base class would delete the buttons that show them.
    delete m_fileButton;
    delete m_recentButton;
    delete m_moreButton;
    delete m_downloadButton;
    delete m_zoomInButton;
    delete m_zoomOutButton;
}

QPushButton* TzToolBar::createToolButton()
{
    auto* button = new QPushButton(this);
    // No keyboard focus: Undo and Paste go on to the canvas behind a click here.
    button->setFocusPolicy(Qt::NoFocus);
    button->setMinimumWidth(s_buttonWidth);
    button->setMaximumWidth(s_buttonWidth);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return button;
}

QPushButton* TzToolBar::createPictureButton(const QString& p_style, const QString& p_toolTip)
{
    QPushButton* button = createToolButton();
    button->setStyleSheet(p_style + QStringLiteral("QPushButton::menu-indicator{image:none;}"));
    button->setToolTip(p_toolTip);
    return button;
}

void TzToolBar::createFileButton()
{
    m_fileMenu.setStyleSheet(menuStyleSheet());
    m_fileMenu.addAction(tr("新建"), this, &TzToolBar::OnNew, Qt::CTRL + Qt::Key_N);
    m_fileMenu.addAction(tr("打开"), this, &TzToolBar::OnOpen, Qt::CTRL + Qt::Key_O);
    m_fileMenu.addAction(tr("保存"), this, &TzToolBar::OnSave, Qt::CTRL + Qt::Key_S);
    m_fileMenu.addAction(tr("另存为"), this, &TzToolBar::OnSaveAs, Qt::CTRL + Qt::Key_A);
    m_fileMenu.addSeparator();
    m_fileMenu.addAction(tr("关闭"), this, &TzToolBar::OnQuit, Qt::CTRL + Qt::Key_Q);
    m_fileButton = createPictureButton(styleOf(s_filePictures), tr("文件"));
    setMenu(*m_fileButton, m_fileMenu);
}

void TzToolBar::createZoomButtons()
{
    // Meant: the slots' names run against the buttons; connections and tests go by them.
    m_zoomInButton = createPictureButton(styleOf(s_zoomInPictures), tr("放大"));
    m_zoomInButton->setShortcut(QKeySequence(QKeySequence::ZoomIn));
    connect(m_zoomInButton, &QPushButton::clicked, this, &TzToolBar::OnZoomOut);
    m_zoomNormalButton = createPictureButton(styleOf(s_zoomNormalPictures), tr("重置缩放"));
    connect(m_zoomNormalButton, &QPushButton::clicked, this, &TzToolBar::OnZoomNormal);
    m_zoomOutButton = createPictureButton(styleOf(s_zoomOutPictures), tr("缩小"));
    m_zoomOutButton->setShortcut(QKeySequence(QKeySequence::ZoomOut));
    connect(m_zoomOutButton, &QPushButton::clicked, this, &TzToolBar::OnZoomIn);
}

void TzToolBar::createDownloadButton()
{
    m_downloadButton = createPictureButton(styleOf(s_downloadPictures), tr("下载"));
    connect(m_downloadButton, &QPushButton::clicked, this, &TzToolBar::OnDownload);
}

void TzToolBar::setUpNameField()
{
    QFont labelFont = m_nameLabel.font();
    labelFont.setPixelSize(14);
    m_nameLabel.setFont(labelFont);
    m_nameLabel.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_nameLabel.setText(QLatin1Char(' ') + tr("程序名:") + QLatin1Char(' '));
    m_nameLabel.setStyleSheet(QStringLiteral("color:rgb(255, 255, 255);"));
    m_nameLabel.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    m_nameEdit.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const QRegExp allowed(QStringLiteral("[a-zA-Z0-9]{0,6}"), Qt::CaseSensitive);
    m_nameEdit.setValidator(new QRegExpValidator(allowed, &m_nameEdit));
    m_nameEdit.setText(QStringLiteral("RunA"));
    m_nameEdit.setFixedSize(140, 24);
    // Room for the field's rounded end and, on the right, for its pencil.
    m_nameEdit.setTextMargins(6, 0, 22, 0);
    m_nameEdit.setStyleSheet(
        QStringLiteral("QLineEdit{border:none;font:12px;background-color:transparent;"
                       "background-image:url(:/run-nol-140x24.png);}"
                       "QLineEdit:enabled:hover{background-image:url(:/run-pre-140x24.png);}"
                       "QLineEdit:enabled:focus{background-image:url(:/run-pre-140x24.png);}"));
}

void TzToolBar::createRecentButton()
{
    m_recentButton = createPictureButton(
        styleOf(s_recentPictures) +
            QStringLiteral("QPushButton:disabled {border-image:url(:/zuijin-dis.png);}"),
        tr("最近文档"));
    setMenu(*m_recentButton, m_recentMenu);
    m_recentButton->setEnabled(false);
}

void TzToolBar::createCodeButton()
{
    m_codeButton = createPictureButton(
        styleOf(s_codePictures) + QStringLiteral("QPushButton:checked {border-image:url(%1);}")
                                      .arg(QLatin1String(s_codePictures.pressed)),
        tr("C 语言程序"));
    m_codeButton->setCheckable(true);
    connect(m_codeButton, &QPushButton::clicked, this, &TzToolBar::OnShowCode);
}

void TzToolBar::setCodeShown(bool p_shown) { m_codeButton->setChecked(p_shown); }

void TzToolBar::createMoreButton()
{
    m_moreMenu.setStyleSheet(menuStyleSheet());
    m_moreMenu.addAction(tr("选择控制器"), this, &TzToolBar::onControllerType)->setEnabled(false);
    m_moreMenu.addSeparator();
    m_moreMenu.addAction(tr("固件升级"), this, &TzToolBar::OnControlUpdate);
    m_moreMenu.addAction(tr("检测软件更新"), this, &TzToolBar::appUpgradeSignal);
    m_moreMenu.addSeparator();
    m_moreMenu.addAction(tr("关于"), this, &TzToolBar::OnAbout);
    m_moreButton = createPictureButton(styleOf(s_morePictures), QString());
    setMenu(*m_moreButton, m_moreMenu);
}

void TzToolBar::resizeEvent(QResizeEvent* p_event)
{
    QWidget::resizeEvent(p_event);
    m_moreButton->move(width() - s_buttonWidth - s_rightGap, 0);
    fitNotices();
}

void TzToolBar::fitNotices()
{
    const int room = width() - s_rightGap - 8 * s_buttonWidth - m_nameLabel.sizeHint().width() -
                     m_nameEdit.width() - 2 * s_infoMargin;
    for (int i = 0; i < m_infoLayout->count(); ++i) {
        QWidget* notice = m_infoLayout->itemAt(i)->widget();
        auto* label = notice->findChild<QLabel*>();
        label->setWordWrap(false);
        label->setMinimumWidth(0);
        notice->layout()->setContentsMargins(s_noticeMargin, s_noticeMargin, s_noticeMargin,
                                             s_noticeMargin);
        m_infoLayout->setMargin(s_infoMargin);
        if (notice->sizeHint().width() > room) {
            // A bar of a small screen: two lines take its whole height.
            label->setWordWrap(true);
            label->setMinimumWidth(widthOfTwoLines(*label));
            notice->layout()->setContentsMargins(s_infoMargin, 0, 0, 0);
            m_infoLayout->setMargin(0);
        }
    }
}

void TzToolBar::keyPressEvent(QKeyEvent* p_event)
{
    // The name field leaves these keys to its parent, whatever stands in it.
    switch (p_event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        emit nameDoneSignal();
        break;
    default:
        QWidget::keyPressEvent(p_event);
        break;
    }
}

QString TzToolBar::programName() const { return m_nameEdit.text(); }

void TzToolBar::setProgramName(const QString& p_name) { m_nameEdit.setText(p_name); }

void TzToolBar::addInfo(const QString& p_text)
{
    auto* notice = new QWidget(this);
    notice->setObjectName(QStringLiteral("infoBg"));
    notice->setStyleSheet(QStringLiteral("QWidget#infoBg{border: none; border-radius:5px;"
                                         "background-color: rgba(0, 0, 0, 20%);}"));
    auto* noticeLayout = new QHBoxLayout(notice);
    noticeLayout->setMargin(s_noticeMargin);
    noticeLayout->setSpacing(s_noticeMargin);
    auto* label = new QLabel(p_text, notice);
    label->setStyleSheet(QStringLiteral("color:rgb(255,255,255)"));
    noticeLayout->addWidget(label);

    auto* buttonLayout = new QHBoxLayout;
    buttonLayout->setMargin(0);
    noticeLayout->addLayout(buttonLayout);
    auto* button = new QPushButton(QLatin1Char(' ') + tr("更新") + QLatin1Char(' '), notice);
    button->setObjectName(QStringLiteral("info_button"));
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    button->setStyleSheet(QStringLiteral(
        "QPushButton#info_button{border-radius:3px;color:white;"
        "border: 1px solid rgba(0, 0, 0, 20%);background-color: rgba(100, 100, 100, 20%);}"
        "QPushButton#info_button:hover{background-color: rgba(255, 255, 255, 20%);}"
        "QPushButton#info_button:pressed{background-color: rgba(0, 0, 0, 20%);}"));
    connect(button, &QPushButton::released, this, &TzToolBar::onInfoButtonClicked);
    buttonLayout->addWidget(button);
    m_infoLayout->addWidget(notice);
    fitNotices();
}

void TzToolBar::removeInfo()
{
    while (m_infoLayout->count() > 0) {
        QLayoutItem* item = m_infoLayout->takeAt(0);
        if (QWidget* notice = item->widget()) {
            notice->deleteLater();
        }
        delete item;
    }
}

void TzToolBar::checkFirmwareNotice()
{
    const QString found = getString(firmwareTimeKey());
    if (found.isEmpty()) {
        return;
    }
    // Meant: a text that is no date counts as today, so that the notice shows; the design says so.
    const QDateTime time = QDateTime::fromString(found, Qt::TextDate);
    if (time.daysTo(QDateTime::currentDateTime()) == 0) {
        addInfo(firmwareNotice());
    }
}

void TzToolBar::showFirmwareNotice()
{
    removeInfo();
    addInfo(firmwareNotice());
    setString(firmwareTimeKey(), QDateTime::currentDateTime().toString(Qt::TextDate));
    save();
}

void TzToolBar::OnUpdateRecentMenuSignal()
{
    m_recentMenu.clear();
    const int shown = qMin(recentFiles.size(), s_recentShown);
    for (int i = 0; i < shown; ++i) {
        const QString& path = recentFiles.at(i);
        m_recentMenu.addAction(QFileInfo(path).fileName(), this, &TzToolBar::OnRecentFile)
            ->setData(path);
    }
    m_recentButton->setEnabled(shown > 0);
}

void TzToolBar::OnNew() { emit newFileSignal(); }

void TzToolBar::OnOpen() { emit openFileSignal(); }

void TzToolBar::OnSave() { emit saveSignal(); }

void TzToolBar::OnSaveAs() { emit saveAsSignal(); }

void TzToolBar::OnExample()
{
    QFileDialog::getOpenFileName(nullptr, tr("打开文件"), QString(), QStringLiteral("tv(*.*)"));
}

void TzToolBar::OnRecent() {}

void TzToolBar::OnQuit() { QCoreApplication::exit(0); }

void TzToolBar::OnMain() { emit switchSubProgram(0); }

void TzToolBar::OnNewSub() { emit newSubSignal(); }

void TzToolBar::OnDeleteSub() { emit delSubSignal(); }

void TzToolBar::OnShowCode() { emit showCodeSignal(CCode); }

void TzToolBar::OnEditCode() { emit chgToCodeSignal(); }

void TzToolBar::OnShowPythonCode() { emit showCodeSignal(PythonCode); }

void TzToolBar::OnEditPython() { emit chgToPyhtonSignal(); }

void TzToolBar::OnZoomIn() { emit zoomSceneSignal(-1); }

void TzToolBar::OnZoomOut() { emit zoomSceneSignal(1); }

void TzToolBar::OnZoomNormal() { emit zoomSceneSignal(0); }

void TzToolBar::OnDownload() { emit downloadSignal(m_nameEdit.text()); }

void TzToolBar::OnToSketchpad()
{
    QProcess::startDetached(QCoreApplication::applicationDirPath() +
                                QStringLiteral("/Korvane Sketchpad.exe"),
                            QStringList());
}

void TzToolBar::OnMore() {}

void TzToolBar::OnAbout()
{
    aboutDialog dialog;
    dialog.exec();
}

void TzToolBar::OnUpdateFunMenu() {}

void TzToolBar::OnSwitchSubProgram()
{
    if (const auto* action = qobject_cast<QAction*>(sender())) {
        emit switchSubProgram(action->data().toInt());
    }
}

void TzToolBar::OnControlUpdate()
{
    buildDialog dialog;
    dialog.startFirmwareUpdate();
}

void TzToolBar::OnRecentFile()
{
    if (const auto* action = qobject_cast<QAction*>(sender())) {
        emit openRecentFileSignal(action->data().toString());
    }
}

void TzToolBar::onControllerType() {}

void TzToolBar::onInfoButtonClicked() { OnControlUpdate(); }
