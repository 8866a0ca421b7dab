#include "modules/catalogue/dragpayload.h"

#include "modules/catalogue/blocktables.h"

#include <QDataStream>
#include <QMimeData>

const char* blockMimeType() { return "application/x-dnditemdata"; }

QByteArray blockDragData(const BlockRecord& p_record)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << p_record.image << p_record.pressedImage << p_record.caption
           << static_cast<qint32>(p_record.id);
    return data;
}

bool isBlockDrag(const QMimeData& p_data)
{
    return p_data.hasFormat(QLatin1String(blockMimeType()));
}

bool readBlockDrag(const QMimeData* p_data, int& p_id)
{
    if (!p_data || !isBlockDrag(*p_data)) {
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
