#pragma once

class QMimeData;

/** The MIME type of a block on its way from the palette. */
const char* blockMimeType();

/** The block type in a drag's data; false if there is none or it is cut short. */
bool readBlockDrag(const QMimeData* p_data, int& p_id);
