#include "shell/aboutdialog.h"

#include "base/programversion.h"
#include "proj/controls/picturecache.h"
#include "proj/controls/stylesheets.h"
#include "proj/controls/widgetmover.h"
#include "proj/controls/windowshape.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace
{
// The background's parts: a coloured band on top, a robot on the left, a dark foot.
const QSize s_size(400, 210);
const QRect s_titleArea(45, 0, 310, 44);
const QRect s_nameArea(112, 72, 272, 26);
const QRect s_versionArea(112, 106, 272, 26);
const QRect s_infoArea(20, 172, 360, 28);
const QRect s_closeArea(366, 10, 24, 24);

QLabel* addLabel(QWidget* p_parent, const QRect& p_area, const QString& p_name,
                 const QString& p_text, const char* p_colour)
{
    auto* label = new QLabel(p_text, p_parent);
    label->setObjectName(p_name);
    label->setGeometry(p_area);
    label->setStyleSheet(
        QStringLiteral("font: 9pt \"微软雅黑\";color:%1;").arg(QString::fromLatin1(p_colour)));
    return label;
}
} // namespace

aboutDialog::aboutDialog(QWidget* p_parent) : QDialog(p_parent, Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setFixedSize(s_size);
    shapeWindowLikePicture(*this, picture(QStringLiteral(":/guanyutankuang-400x210.png")));
    new WidgetMover(this);
    addLabels();
    addCloseButton();
}

void aboutDialog::addLabels()
{
    const QString title = QCoreApplication::translate("QObject", "塔勒积木编程");
    setWindowTitle(title);
    QLabel* titleLabel = addLabel(this, s_titleArea, QStringLiteral("titleLabel"), title, "white");
    titleLabel->setAlignment(Qt::AlignCenter);
    addLabel(this, s_nameArea, QStringLiteral("nameLabel"), tr("名称: ") + title, "#043c66");
    addLabel(this, s_versionArea, QStringLiteral("versionLabel"), tr("版本: ") + programVersion(),
             "#043c66");
    QLabel* info =
        addLabel(this, s_infoArea, QStringLiteral("infoLabel"),
                 QStringLiteral("%1&nbsp;&nbsp;<a style=\"color:white;\" href=\"%2\">%2</a>")
                     .arg(tr("更多信息请访问"), QStringLiteral("https://tiler.example/")),
                 "white");
    info->setTextFormat(Qt::RichText);
    info->setOpenExternalLinks(true);
}

void aboutDialog::addCloseButton()
{
    auto* button = new QPushButton(this);
    button->setObjectName(QStringLiteral("closeButton"));
    button->setGeometry(s_closeArea);
    button->setFlat(true);
    button->setStyleSheet(buttonStyleSheet(QStringLiteral(":/guanyutankuang-guanbi-nol.png"),
                                           QStringLiteral(":/guanyutankuang-guanbi-hover.png"),
                                           QStringLiteral(":/guanyutankuang-guanbi-pre.png"),
                                           QStringLiteral("white")));
    connect(button, &QPushButton::clicked, this, &aboutDialog::close);
}

void aboutDialog::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawPicture(&painter, rect(), picture(QStringLiteral(":/guanyutankuang-400x210.png")));
}
