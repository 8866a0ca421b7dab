#include "shell/mainwindow.h"

#include "actions/editactionwindow.h"
#include "base/installpath.h"
#include "base/programversion.h"
#include "build/builddialog.h"
#include "generator/codegenerator.h"
#include "proj/tzblockwidget.h"
#include "project/projectfile.h"
#include "shell/codehighlighter.h"
#include "shell/codelayout.h"
#include "shell/codepane.h"
#include "shell/tztoolbar.h"
#include "update/upgradedialog.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QTextBrowser>
#include <QVBoxLayout>

QPointer<MainWindow> mainWindow;

namespace
{
const int s_toolBarHeight = 34;
const int s_codePaneWidth = 400;
const int s_paletteMinimum = 100;
const int s_paletteMaximum = 236;
/** From the end of the constructor to the first check for updates. */
const int s_updateMilliseconds = 100;
const char s_filter[] = "(*.tlrx)";
const char s_untitled[] = "untitled";
// The answers to the question about unsaved changes, by the button's place.
const int s_answerSave = 0;
const int s_answerDiscard = 1;
const int s_answerCancel = 2;
} // namespace

MainWindow::MainWindow(QWidget* p_parent)
    : QMainWindow(p_parent), m_programView(m_document), m_codeType(NoCode)
{
    buildWindow();
    connectParts();
    setAcceptDrops(true);
    QTimer::singleShot(s_updateMilliseconds, this, &MainWindow::startUpdates);
}

MainWindow::~MainWindow()
{
    // The document and the view are members, so they go before the widgets that hold it.
    m_document.setProgramNameHolder(nullptr);
    m_programView.setParent(nullptr);
}

void MainWindow::buildWindow()
{
    setStatusBar(nullptr);
    mainWindow = this;
    setFileTitle(QLatin1String(s_untitled));

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    setCentralWidget(central);

    m_toolBar = new TzToolBar(central);
    m_toolBar->setFixedHeight(s_toolBarHeight);
    layout->addWidget(m_toolBar);

    m_codeBrowser = new QTextBrowser(central);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(12);
    m_codeBrowser->setFont(font);
    m_codeBrowser->setLineWrapMode(QTextEdit::NoWrap);
    m_codeBrowser->document()->setDocumentLayout(new CodeLayout(m_codeBrowser->document()));
    new CodeHighlighter(m_codeBrowser->document());
    const int screenWidth = QGuiApplication::primaryScreen()->size().width();
    m_codeBrowser->setGeometry(screenWidth - s_codePaneWidth, 0, s_codePaneWidth, height());
    m_codeBrowser->hide();
    m_codePane = std::make_unique<CodePane>(*m_codeBrowser, m_programView);

    auto* outer = new QSplitter(Qt::Vertical, central);
    outer->setHandleWidth(0);
    m_splitter = new QSplitter(Qt::Horizontal, outer);
    m_splitter->addWidget(&m_programView);
    m_splitter->addWidget(m_codeBrowser);
    m_splitter->setStretchFactor(0, 1);
    outer->addWidget(m_splitter);
    outer->setCollapsible(0, false);

    m_blockWidget = new TzBlockWidget(central, outer);
    m_blockWidget->setMinimumHeight(s_paletteMinimum);
    m_blockWidget->setMaximumHeight(s_paletteMaximum);
    m_blockWidget->resize(width(), s_paletteMaximum);
    outer->addWidget(m_blockWidget);
    outer->setCollapsible(1, false);
    outer->setStretchFactor(0, 1);
    layout->addWidget(outer);
    // Blocks that another window of the program has copied can be pasted at once.
    m_programView.setFocus();
}

void MainWindow::connectParts()
{
    TzProgramView* view = &m_programView;
    m_document.setProgramNameHolder(m_toolBar);
    view->setBuildRunner([this](const QString& p_name, int p_tasks, const QString& p_source) {
        runBuild(p_name, p_tasks, p_source);
    });

    connect(m_toolBar, &TzToolBar::zoomSceneSignal, view, &TzProgramView::zoomView);
    connect(m_toolBar, &TzToolBar::newSubSignal, view, &TzProgramView::OnNewSub);
    connect(m_toolBar, &TzToolBar::delSubSignal, view, &TzProgramView::OnDelSub);
    connect(m_toolBar, &TzToolBar::switchSubProgram, view, &TzProgramView::OnSwitchProgram);
    connect(m_toolBar, &TzToolBar::downloadSignal, this, &MainWindow::onDownLoad);
    connect(m_toolBar, &TzToolBar::saveSignal, this, &MainWindow::OnSaveFile);
    connect(m_toolBar, &TzToolBar::openFileSignal, this, &MainWindow::OnOpenFile);
    connect(m_toolBar, &TzToolBar::newFileSignal, this, &MainWindow::OnNewFile);
    connect(m_toolBar, &TzToolBar::saveAsSignal, this, &MainWindow::OnSaveAsFile);
    connect(m_toolBar, &TzToolBar::showCodeSignal, this, &MainWindow::OnShowCode);
    connect(m_toolBar, &TzToolBar::chgToCodeSignal, this, &MainWindow::OnEditCode);
    connect(m_toolBar, &TzToolBar::chgToPyhtonSignal, this, &MainWindow::OnEditPython);
    connect(m_toolBar, &TzToolBar::chgToEditActionsSignal, this, &MainWindow::OnEditActions);
    connect(m_toolBar, &TzToolBar::appUpgradeSignal, this, &MainWindow::onAppUpgrade);
    connect(m_toolBar, &TzToolBar::openRecentFileSignal, this, &MainWindow::OnOpenRecentFileSignal);
    connect(m_toolBar, &TzToolBar::nameDoneSignal, view, QOverload<>::of(&QWidget::setFocus));

    connect(m_blockWidget, &TzBlockWidget::NewProgramSignal, view, &TzProgramView::OnNewSub);
    connect(m_blockWidget, &TzBlockWidget::NewTaskSignal, view, &TzProgramView::OnNewTask);
    connect(m_blockWidget, &TzBlockWidget::SelectNumberSignal, view,
            &TzProgramView::OnSelectNumberSignal);
    connect(m_blockWidget, &TzBlockWidget::editParamSignal, view,
            &TzProgramView::onEditParamSignal);

    connect(m_blockWidget, &TzBlockWidget::updateViewSignal, view->viewport(),
            QOverload<>::of(&QWidget::update));

    connect(view, &TzProgramView::mouseSignal, m_blockWidget, &TzBlockWidget::OnProgramMouse);
    connect(view, &TzProgramView::moduleUpdateSignal, this, &MainWindow::OnUpdateCode);
    connect(view, &TzProgramView::updateRecentMenuSignal, m_toolBar,
            &TzToolBar::OnUpdateRecentMenuSignal);
    m_toolBar->OnUpdateRecentMenuSignal();
    connect(view, &TzProgramView::showNumKeyboardSignal, m_blockWidget,
            &TzBlockWidget::OnShowNumKeyboardSignal);
    connect(view, &TzProgramView::showVoiceSignal, m_blockWidget,
            &TzBlockWidget::OnShowVoiceSignal);
    connect(view, &TzProgramView::showExpressionSignal, m_blockWidget,
            &TzBlockWidget::OnShowExpressionSignal);
    connect(view, &TzProgramView::showPanelSignal, m_blockWidget,
            &TzBlockWidget::onShowPanelSignal);
    connect(view, &TzProgramView::openPathSignal, this, &MainWindow::openPath);

    connect(&m_autoSaveTimer, &QTimer::timeout, this, &MainWindow::OnAutoSaveFile);
}

void MainWindow::setFileTitle(const QString& name)
{
    setWindowTitle(QObject::tr("塔勒积木编程") + QStringLiteral(" v") + programVersion() +
                   QLatin1Char(' ') + programBuildDate() + QStringLiteral(":  ") + name +
                   QStringLiteral("[*]"));
}

bool MainWindow::mayLoseDocument()
{
    if (!m_document.isModified()) {
        return true;
    }
    const int answer = QMessageBox::question(this, tr("保存"), tr("文件已修改，是否保存"), tr("是"),
                                             tr("否"), tr("取消"), s_answerSave, s_answerCancel);
    return answer == s_answerDiscard || (answer == s_answerSave && OnSaveFile() == 0);
}

bool MainWindow::saveTo(const QString& p_path)
{
    if (!m_document.save(p_path)) {
        return false;
    }
    if (m_fileName != p_path) {
        m_fileName = p_path;
        setFileTitle(m_fileName);
    }
    return true;
}

QString MainWindow::askSavePath(const QString& p_title)
{
    QFileDialog dialog(this, p_title, QString(), QLatin1String(s_filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // A name typed without the ending gets it, or the project could not be opened by its name.
    dialog.setDefaultSuffix(QStringLiteral("tlrx"));
    while (dialog.exec() == QDialog::Accepted) {
        QString path = dialog.selectedFiles().value(0);
        if (path.endsWith(QLatin1String(".tlrx"))) {
            return path;
        }
        // The dialog leaves a name alone when there is a dot somewhere in its folders.
        path += QStringLiteral(".tlrx");
        if (!QFileInfo::exists(path)) {
            return path;
        }
        // It would replace a file without asking: the dialog asks when it gets the full name.
        dialog.selectFile(path);
    }
    return QString();
}

int MainWindow::OnSaveFile()
{
    QString path = m_fileName;
    if (path.isEmpty()) {
        path = askSavePath(tr("保存文件"));
    }
    if (path.isEmpty() || !saveTo(path)) {
        return 1;
    }
    setWindowModified(m_document.isModified());
    return 0;
}

void MainWindow::OnSaveAsFile()
{
    // Meant: this title is not translated; the translations have no entry for it.
    const QString path = askSavePath(QStringLiteral("Save File"));
    if (!path.isEmpty()) {
        // Meant: the window's modified mark stays as it was until the next save, open or new; the
        // design says so.
        saveTo(path);
    }
}

void MainWindow::openProject(const QString& p_path)
{
    switch (m_programView.openFile(p_path)) {
    case ProjectUnreadable:
        QMessageBox::information(this, tr("打开文件"), tr("文件打开失败"), QMessageBox::Ok);
        break;
    case ProjectWrongTag:
        QMessageBox::information(this, tr("打开文件"), tr("文件校验错误"), QMessageBox::Ok);
        break;
    case ProjectOpened:
        m_fileName = p_path;
        setFileTitle(m_fileName);
        break;
    default:
        break;
    }
    setWindowModified(m_document.isModified());
}

void MainWindow::OnOpenFile()
{
    if (!mayLoseDocument()) {
        return;
    }
    const QString path =
        QFileDialog::getOpenFileName(this, tr("打开文件"), QString(), QLatin1String(s_filter));
    if (path.isEmpty()) {
        setWindowModified(m_document.isModified());
        return;
    }
    openProject(path);
}

void MainWindow::openPath(const QString& path)
{
    if (path.right(5) == QLatin1String(".tlrx")) {
        if (mayLoseDocument()) {
            openProject(path);
        }
    } else if (path.right(3) == QLatin1String("tvc")) {
        OnEditCode();
    } else if (path.right(4) == QLatin1String("tvpy")) {
        OnEditPython();
    }
}

void MainWindow::OnNewFile()
{
    if (!mayLoseDocument()) {
        return;
    }
    m_document.startAnew();
    m_fileName.clear();
    setFileTitle(QLatin1String(s_untitled));
    setWindowModified(m_document.isModified());
}

void MainWindow::closeEvent(QCloseEvent* p_event)
{
    if (mayLoseDocument()) {
        QMainWindow::closeEvent(p_event);
    } else {
        p_event->ignore();
    }
}

void MainWindow::OnShowCode(int type)
{
    m_codePane->showCode(type);
    const bool shows = m_codeType != type;
    if (shows && !m_codeBrowser->isVisible()) {
        m_splitter->setSizes({width() - s_codePaneWidth, s_codePaneWidth});
    }
    m_codeBrowser->setVisible(shows);
    m_codeType = shows ? type : static_cast<int>(NoCode);
    m_toolBar->setCodeShown(m_codeType == CCode);
}

void MainWindow::OnUpdateCode()
{
    if (m_codeBrowser->isVisible()) {
        m_codePane->showCode(m_codeType);
    }
}

void MainWindow::OnEditActions()
{
    if (!m_actionWindow) {
        m_actionWindow = std::make_unique<editActionWindow>(m_document.actions());
    }
    m_actionWindow->showMaximized();
    hide();
}

void MainWindow::onDownLoad(const QString&)
{
    // Meant: the image counts as needed from here on, whatever becomes of the build; see
    // startAnew().
    m_document.actions();
    m_programView.OnDownload(m_toolBar->programName());
}

void MainWindow::runBuild(const QString& p_name, int p_tasks, const QString& p_source)
{
    buildDialog dialog;
    dialog.setFinishProgramFile([this](const QString& p_path) { appendCompiledData(p_path); });
    dialog.startBuild(p_name, p_tasks, p_source);
}

void MainWindow::appendCompiledData(const QString& path)
{
    m_document.actions().appendTo(path, ActionTail::ImageAndTrailer);
}

void MainWindow::startUpdates()
{
    m_upgradeDialog = new UpgradeDialog(this);
    connect(m_upgradeDialog, &UpgradeDialog::firmwareArrivedSignal, m_toolBar,
            &TzToolBar::showFirmwareNotice);
    connect(m_upgradeDialog, &UpgradeDialog::updateFirmwareSignal, m_toolBar,
            &TzToolBar::OnControlUpdate);
    m_upgradeDialog->startCheck();
    m_upgradeDialog->removeUsedInstaller();
}

void MainWindow::onAppUpgrade()
{
    if (m_upgradeDialog && !m_upgradeDialog->isVisible()) {
        m_upgradeDialog->show();
        m_upgradeDialog->startCheck();
    }
}

void MainWindow::OnAutoSaveFile()
{
    if (m_programView.saveTempFile(installPath(QStringLiteral("\\temp.tlrx")),
                                   m_document.actions().bytes())) {
        // Meant: not modified, as after any append of the image; the design says so.
        m_document.actions().setModified(false);
    }
}
