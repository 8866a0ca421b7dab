#pragma once

#include "canvas/linkcandidates.h"

class FeedbackModule;
class QGraphicsScene;

/**
 * The preview of a link: finds the best place for a dragged block, opens a gap there with a preview
 * block in it, and links the dragged block there when it is dropped. Owns the preview block, which
 * is in the scene, hidden as long as there is no place.
 */
class LinkPreview
{
public:
    /** The scene must outlive the preview. p_main is the block that is never linked anywhere. */
    LinkPreview(QGraphicsScene& p_scene, const supermodule* p_main);
    ~LinkPreview();
    Q_DISABLE_COPY(LinkPreview)

    FeedbackModule* block() const { return m_block.get(); }
    /** Where the gap is open; no target while there is none. */
    const LinkCandidate& place() const { return m_place; }

    /** Opens the gap at the best place for a block where it stands, or closes it. */
    void follow(const supermodule* p_module);
    /** Closes the gap. */
    void hide();
    /**
     * Ends the drag of a block: closes the gap and links the block at its place, or leaves it loose
     * where it is, in whole scene units.
     */
    void settle(supermodule* p_module);
    /** Links a block at a place, or where the gap is open for a null target; false for no place. */
    bool link(supermodule* p_module, supermodule* p_target, int p_type) const;

private:
    void show(const LinkCandidate& p_place);

    std::unique_ptr<FeedbackModule> m_block;
    const supermodule* m_main;
    LinkCandidate m_place;
};
