#include "canvas/linkcandidates.h"

#include "base/tilerlog.h"

#include <QDebug>

QList<LinkCandidate> collectLinkCandidates(const supermodule* p_module,
                                           const supermodule* p_mainModule,
                                           const supermodule* p_preview)
{
    QList<LinkCandidate> list;
    if (p_module == p_mainModule) {
        return list;
    }
    const QList<collisionItem*> connectors = p_module->touchedConnectors();
    for (const collisionItem* connector : connectors) {
        supermodule* owner = supermodule::fromItem(connector->parentItem());
        const int type = connector->linkType();
        if (type != NoLink && owner != p_preview && !p_module->containsModule(owner)) {
            list.append({owner, type, p_module->distanceTo(*connector)});
        }
    }
    return list;
}

LinkCandidate bestLinkCandidate(const QList<LinkCandidate>& p_list)
{
    LinkCandidate best;
    for (const LinkCandidate& candidate : p_list) {
        if (candidate.m_target && candidate.m_distance < best.m_distance) {
            best = candidate;
        }
    }
    return best;
}

void linkAt(supermodule* p_target, int p_type, supermodule* p_module)
{
    qCDebug(tilerLog) << " TzProgramView::moduleDrop "
                      << "p_module" << p_module << "m_target " << p_target << "m_type " << p_type;
    p_target->insert(static_cast<LinkType>(p_type), p_module);
}
