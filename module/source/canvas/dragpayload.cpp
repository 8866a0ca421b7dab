#include "dragpayload.h"

#include <QDataStream>
#include <QMimeData>

const char* blockMimeType() { return "application/x-dnditemdata"; }

bool readBlockDrag(const QMimeData* p_data, int& p_id)
{
    if (!p_data || !p_data->hasFormat(QLatin1String(blockMimeType()))) {
        return false;
    }
    QByteArray payload = p_data->data(QLatin1String(blockMimeType()));
    QDataStream stream(&payload, QIODevice::ReadOnly);
    // The strings are the palette's own; only the type counts here.
    QString image;
    QString pressedImage;
    QString caption;
    qint32 id = 0;
    stream >> image >> pressedImage >> caption >> id;
    p_id = id;
    return stream.status() == QDataStream::Ok;
}
