#pragma once

#include <QByteArray>
#include <QStringList>

class supermodule;
class TzProgramView;

/** All blocks of a canvas but the preview. */
QList<supermodule*> canvasBlocks(const TzProgramView& p_view);

/**
 * What breaks the rules that a document keeps at every moment, as readable lines; empty when all
 * is well: links and parents agree, nothing is its own ancestor, scene, registry and roots hold
 * the same blocks, nothing is left over, everything stands where the layout puts it, faded or not
 * as it should be. In the middle of a drag the block in the air and the preview have their
 * freedoms.
 */
QStringList brokenInvariants(const TzProgramView& p_view);

/**
 * A saved project's text cut before each chain, in an order of its own: loose chains are stored in
 * stacking order, which each opening turns round. So a project that comes back as it was gives the
 * same list again.
 */
QList<QByteArray> storedChains(const QByteArray& p_file);
