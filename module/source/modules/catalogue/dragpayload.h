#pragma once

#include <QByteArray>

class QMimeData;
struct BlockRecord;

/** The MIME type of a drag from the palette. */
const char* blockMimeType();

/** A block type's data for a drag. */
QByteArray blockDragData(const BlockRecord& p_record);

/** True for the data of such a drag. */
bool isBlockDrag(const QMimeData& p_data);

/** The block type in a drag's data; false if there is none or it is cut short. */
bool readBlockDrag(const QMimeData* p_data, int& p_id);
