#pragma once

#include "modules/supermodule.h"

#include <QList>
#include <QPointer>

/** A place where a dragged block could be linked. */
struct LinkCandidate {
    QPointer<supermodule> m_target;
    int m_type = NoLink;
    int m_distance = 10000; /**< scene units; 10000 for none */
};

/**
 * The places that a block touches where it stands, those of newer blocks first:
 * connectors of other blocks that don't hang under it. Occupied ones count. p_preview, the drop
 * preview, is never a place; the main block has none.
 */
QList<LinkCandidate> collectLinkCandidates(const supermodule* p_module,
                                           const supermodule* p_mainModule,
                                           const supermodule* p_preview);

/** The nearest of them, the first one among equals; one without a target if there is none. */
LinkCandidate bestLinkCandidate(const QList<LinkCandidate>& p_list);

/** Links a block at a place; other types than the three links do nothing. */
void linkAt(supermodule* p_target, int p_type, supermodule* p_module);
