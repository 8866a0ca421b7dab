#include "sheets.h"

#include <QDir>
#include <QImage>
#include <QPainter>

namespace
{
const int s_columns = 3;
const int s_rows = 4;
const int s_width = 620;
const int s_gap = 10;
const int s_label = 22;
} // namespace

void makeSheets(const QString& p_folder)
{
    const QDir folder(p_folder);
    const QStringList names = folder.entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    if (names.isEmpty()) {
        return;
    }
    const QSize first = QImage(folder.filePath(names.first())).size();
    const int height = s_width * first.height() / first.width();
    const QSize cell(s_width + s_gap, height + s_label + s_gap);
    const int perPage = s_columns * s_rows;
    for (int begin = 0; begin < names.size(); begin += perPage) {
        QImage page(s_columns * cell.width() + s_gap, s_rows * cell.height() + s_gap,
                    QImage::Format_RGB32);
        page.fill(Qt::white);
        QPainter painter(&page);
        for (int i = 0; i < qMin(perPage, names.size() - begin); ++i) {
            const QString& name = names.at(begin + i);
            const QPoint at(s_gap + i % s_columns * cell.width(),
                            s_gap + i / s_columns * cell.height());
            painter.drawText(at + QPoint(2, s_label - 6), name.chopped(4));
            painter.drawImage(
                at + QPoint(0, s_label),
                QImage(folder.filePath(name))
                    .scaled(s_width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        }
        painter.end();
        page.save(QStringLiteral("%1-%2.png").arg(folder.absolutePath()).arg(begin / perPage + 1));
    }
}
