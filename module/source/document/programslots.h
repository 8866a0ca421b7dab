#pragma once

#include "document/modulesid.h"

#include <QGraphicsScene>
#include <QPair>
#include <QString>
#include <QVector>

class supermodule;

/**
 * The thirty sub-programs and their names, each name translated. A name is empty while its
 * sub-program exists: the list is both the pool of free names and the store of those in use.
 * Built at first use.
 */
QVector<QPair<modulesId, QString>>& subProgramNames();

/** The name that a sub-program has by default; empty for any other slot. */
QString defaultSubProgramName(modulesId p_id);

/** The slot that a block belongs to: its own type if it is a slot's root, else its ownid. */
modulesId slotOf(const supermodule* p_module);

/** The program's blocks without parent in a scene, in descending stacking order. */
QList<supermodule*> rootBlocks(const QGraphicsScene& p_scene);

/** Shows the blocks of one slot, hides the others; tasks go with the main program. */
void showProgramSlot(const QGraphicsScene& p_scene, modulesId p_id);
