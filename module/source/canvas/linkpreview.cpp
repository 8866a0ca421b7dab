#include "canvas/linkpreview.h"

#include "modules/feedbackmodule.h"

#include <QGraphicsScene>

LinkPreview::LinkPreview(QGraphicsScene& p_scene, const supermodule* p_main)
    : m_block(std::make_unique<FeedbackModule>()), m_main(p_main)
{
    // Neither movable nor selectable, unlike a block of the program.
    m_block->createCollisions();
    m_block->hide();
    p_scene.addItem(m_block.get());
}

LinkPreview::~LinkPreview() { hide(); }

void LinkPreview::follow(const supermodule* p_module)
{
    const LinkCandidate best =
        bestLinkCandidate(collectLinkCandidates(p_module, m_main, m_block.get()));
    if (best.m_target) {
        show(best);
    } else {
        hide();
    }
}

void LinkPreview::show(const LinkCandidate& p_place)
{
    const bool samePlace = p_place.m_target == m_place.m_target && p_place.m_type == m_place.m_type;
    if (!samePlace) {
        hide();
        m_block->show();
        linkAt(p_place.m_target, p_place.m_type, m_block.get());
    }
    m_place = p_place;
}

void LinkPreview::hide()
{
    if (!m_block->isVisible() && !m_block->parentModule() && !m_block->next()) {
        return;
    }
    m_block->detachFromParent();
    if (supermodule* behind = m_block->next()) {
        m_block->removeChild(behind);
        if (m_place.m_target) {
            linkAt(m_place.m_target, m_place.m_type, behind);
        }
    }
    m_place = LinkCandidate();
    m_block->hide();
}

void LinkPreview::settle(supermodule* p_module)
{
    supermodule* target = m_place.m_target;
    const int type = m_place.m_type;
    hide();
    if (target) {
        linkAt(target, type, p_module);
    }
    if (!p_module->parentModule()) {
        // Whole scene units: a project file reads back no others.
        p_module->setPos(p_module->pos().toPoint());
    }
    p_module->updateTreeAndOpacity();
}

bool LinkPreview::link(supermodule* p_module, supermodule* p_target, int p_type) const
{
    const LinkCandidate place = p_target ? LinkCandidate{p_target, p_type, 0} : m_place;
    if (!place.m_target) {
        return false;
    }
    linkAt(place.m_target, place.m_type, p_module);
    return true;
}
