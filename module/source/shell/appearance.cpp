#include "shell/appearance.h"

#include "proj/controls/stylesheets.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QIcon>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QTreeView>

namespace
{
struct StandardPicture {
    QStyle::StandardPixmap pixmap;
    const char* picture;
};
const StandardPicture s_pictures[] = {
    {QStyle::SP_MessageBoxQuestion, ":/box-question.png"},
    {QStyle::SP_MessageBoxInformation, ":/box-information.png"},
    {QStyle::SP_MessageBoxWarning, ":/box-warning.png"},
    {QStyle::SP_MessageBoxCritical, ":/box-critical.png"},
    {QStyle::SP_ArrowBack, ":/files-back.png"},
    {QStyle::SP_ArrowForward, ":/files-forward.png"},
    {QStyle::SP_FileDialogToParent, ":/files-up.png"},
    {QStyle::SP_FileDialogNewFolder, ":/files-new-folder.png"},
    {QStyle::SP_FileDialogListView, ":/files-list.png"},
    {QStyle::SP_FileDialogDetailedView, ":/files-detail.png"},
    {QStyle::SP_DirIcon, ":/files-folder.png"},
    {QStyle::SP_DirClosedIcon, ":/files-folder.png"},
    {QStyle::SP_DirOpenIcon, ":/files-folder.png"},
    {QStyle::SP_DirLinkIcon, ":/files-folder.png"},
    {QStyle::SP_DirHomeIcon, ":/files-home.png"},
    {QStyle::SP_DesktopIcon, ":/files-computer.png"},
    {QStyle::SP_ComputerIcon, ":/files-computer.png"},
    {QStyle::SP_DriveHDIcon, ":/files-drive.png"},
    {QStyle::SP_DriveFDIcon, ":/files-drive.png"},
    {QStyle::SP_DriveCDIcon, ":/files-drive.png"},
    {QStyle::SP_DriveDVDIcon, ":/files-drive.png"},
    {QStyle::SP_DriveNetIcon, ":/files-drive.png"},
    {QStyle::SP_FileIcon, ":/files-sheet.png"},
    {QStyle::SP_FileLinkIcon, ":/files-sheet.png"},
};

/** Qt's plain style with the program's own pictures. */
class Style : public QProxyStyle
{
public:
    Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    using QProxyStyle::polish;

    void polish(QWidget* p_widget) override
    {
        QProxyStyle::polish(p_widget);
        if (qobject_cast<QFileDialog*>(p_widget)) {
            p_widget->installEventFilter(this);
        }
    }

    bool eventFilter(QObject* p_watched, QEvent* p_event) override
    {
        // Not before: a file dialog restores its columns after it has been polished.
        const auto* details =
            p_event->type() == QEvent::Show ? p_watched->findChild<QTreeView*>() : nullptr;
        if (details && details->header()->count() > 0) {
            // Qt has room for dates in its authors' way alone, which is shorter than others.
            details->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
            details->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        }
        return QProxyStyle::eventFilter(p_watched, p_event);
    }

    int styleHint(StyleHint p_hint, const QStyleOption* p_option, const QWidget* p_widget,
                  QStyleHintReturn* p_return) const override
    {
        return p_hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(p_hint, p_option, p_widget, p_return);
    }

    QIcon standardIcon(StandardPixmap p_pixmap, const QStyleOption* p_option,
                       const QWidget* p_widget) const override
    {
        const char* picture = pictureOf(p_pixmap);
        return picture ? QIcon(QLatin1String(picture))
                       : QProxyStyle::standardIcon(p_pixmap, p_option, p_widget);
    }

    QPixmap standardPixmap(StandardPixmap p_pixmap, const QStyleOption* p_option,
                           const QWidget* p_widget) const override
    {
        const char* picture = pictureOf(p_pixmap);
        return picture ? QPixmap(QLatin1String(picture))
                       : QProxyStyle::standardPixmap(p_pixmap, p_option, p_widget);
    }

private:
    static const char* pictureOf(StandardPixmap p_pixmap)
    {
        for (const StandardPicture& row : s_pictures) {
            if (row.pixmap == p_pixmap) {
                return row.picture;
            }
        }
        return nullptr;
    }
};

QPalette lightPalette()
{
    // Every colour is named: a palette asks the desktop for what is left out.
    struct Row {
        QPalette::ColorRole role;
        QRgb colour;
    };
    static const Row s_rows[] = {
        {QPalette::WindowText, 0xff21323c},    {QPalette::Button, 0xffeef6f9},
        {QPalette::Light, 0xffffffff},         {QPalette::Midlight, 0xfff4fafc},
        {QPalette::Dark, 0xff9fb6c0},          {QPalette::Mid, 0xffc3d3da},
        {QPalette::Text, 0xff21323c},          {QPalette::BrightText, 0xffffffff},
        {QPalette::ButtonText, 0xff21323c},    {QPalette::Base, 0xffffffff},
        {QPalette::Window, 0xfff4fafc},        {QPalette::Shadow, 0xff7a8f99},
        {QPalette::Highlight, 0xff00829b},     {QPalette::HighlightedText, 0xffffffff},
        {QPalette::Link, 0xff0572cc},          {QPalette::LinkVisited, 0xff6743fa},
        {QPalette::AlternateBase, 0xfff4fafc}, {QPalette::ToolTipBase, 0xffffffff},
        {QPalette::ToolTipText, 0xff043c66},   {QPalette::PlaceholderText, 0xff7a8f99},
    };
    QPalette palette;
    for (const Row& row : s_rows) {
        palette.setColor(QPalette::All, row.role, QColor(row.colour));
    }
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(0x99, 0x99, 0x99));
    }
    return palette;
}

/** For what has no sheet of its own. Only names that nothing else of the program has. */
const char s_sheet[] =
    "QScrollBar::add-line,QScrollBar::sub-line{width:0px;height:0px;border:none;}"
    "QMessageBox,QFileDialog{background-color:#ffffff;}"
    "QMessageBox QLabel,QFileDialog QLabel{color:#21323c;}"
    "QMessageBox QPushButton,QFileDialog QPushButton{background-color:#ffffff;color:#00718a;"
    "border:2px solid #86c6d8;border-radius:8px;padding:5px 18px;min-width:52px;}"
    "QMessageBox QPushButton:default,QFileDialog QPushButton:default{background-color:#00829b;"
    "color:#ffffff;border-color:#00829b;}"
    "QMessageBox QPushButton:hover,QFileDialog QPushButton:hover{border-color:#00afcc;"
    "background-color:#e3f6fa;color:#00718a;}"
    "QMessageBox QPushButton:pressed,QFileDialog QPushButton:pressed{border-color:#00718a;"
    "background-color:#00718a;color:#ffffff;}"
    "QMessageBox QPushButton:disabled,QFileDialog QPushButton:disabled{background-color:#f0f3f4;"
    "color:#999999;border-color:#d5dde1;}"
    "QFileDialog QToolButton{background-color:transparent;border:none;border-radius:8px;"
    "padding:4px;}"
    "QFileDialog QToolButton:hover{background-color:#e3f6fa;}"
    "QFileDialog QToolButton:pressed,QFileDialog QToolButton:checked{background-color:#c8ebf3;}"
    "QFileDialog QLineEdit,QFileDialog QComboBox{background-color:#ffffff;color:#21323c;"
    "border:2px solid #86c6d8;border-radius:8px;padding:3px 8px;}"
    "QFileDialog QLineEdit:focus,QFileDialog QComboBox:focus{border-color:#00829b;}"
    "QFileDialog QComboBox::drop-down{border:none;width:24px;}"
    "QFileDialog QComboBox::down-arrow{image:url(:/files-down.png);width:16px;height:16px;}"
    "QFileDialog QAbstractItemView{background-color:#ffffff;color:#21323c;"
    "border:1px solid #c3d3da;selection-background-color:#00829b;selection-color:#ffffff;}"
    "QFileDialog{min-width:760px;min-height:460px;}"
    "QFileDialog QHeaderView{background-color:#eef6f9;}"
    "QFileDialog QHeaderView::section{background-color:#eef6f9;color:#21323c;border:none;"
    "padding:4px 8px;}"
    "QTextBrowser{background-color:#f4fafc;border:none;border-left:1px solid #c3d3da;}"
    "QFileDialog QScrollBar,QTextBrowser QScrollBar{background-color:#e3eef2;border:none;}"
    "QFileDialog QScrollBar:horizontal,QTextBrowser QScrollBar:horizontal{height:12px;}"
    "QFileDialog QScrollBar:vertical,QTextBrowser QScrollBar:vertical{width:12px;}"
    "QFileDialog QScrollBar::handle,QTextBrowser QScrollBar::handle{background-color:#86c6d8;"
    "border-radius:6px;min-width:32px;min-height:32px;}";

/** The program's icon in the sizes from title bars to task switchers. */
QIcon programIcon()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addFile(QStringLiteral(":/icon/%1.png").arg(side), QSize(side, side));
    }
    return icon;
}
} // namespace

void setUpAppearance()
{
    // Without it icons take no account of a screen with more pixels than units.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setWindowIcon(programIcon());
    // The name of the desktop entry, by which a desktop finds the icon where windows have none.
    QGuiApplication::setDesktopFileName(QStringLiteral("tiler"));
    // The application becomes the owner, which the analyzer doesn't see.
    QApplication::setStyle(new Style);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    QApplication::setPalette(lightPalette());
    qApp->setStyleSheet(toolTipStyleSheet() + QLatin1String(s_sheet));
}
