#include "document/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

void ClipBoard::setData(const QString& p_format, const QString& p_text)
{
    // QClipboard takes ownership.
    auto* data = new QMimeData;
    data->setData(p_format, p_text.toUtf8());
    QGuiApplication::clipboard()->setMimeData(data, QClipboard::Clipboard);
}

bool ClipBoard::hasFormat(const QString& p_format)
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(p_format);
}

QString ClipBoard::data(const QString& p_format)
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) {
        return QString(QLatin1String(""));
    }
    if (!data->hasFormat(p_format)) {
        return QString();
    }
    return QString::fromUtf8(data->data(p_format).constData());
}
