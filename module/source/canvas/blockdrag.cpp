#include "canvas/blockdrag.h"

#include "canvas/linkpreview.h"
#include "document/document.h"
#include "modules/mainmodule.h"

namespace
{
const int s_draggedZ = 10;
} // namespace

BlockDrag::BlockDrag(Document& p_document, LinkPreview& p_preview,
                     std::function<void()> p_abandoned)
    : m_document(p_document), m_preview(p_preview), m_abandoned(std::move(p_abandoned))
{
}

void BlockDrag::press(supermodule* p_module, const QPointF& p_at)
{
    m_module = p_module;
    m_lastAt = p_at;
    if (p_module) {
        // A drag may have ended without a release, by a new document or a dialog.
        p_module->m_moved = false;
        m_pressPlace = ModulePlace::of(p_module);
    }
}

bool BlockDrag::move(const QPointF& p_at)
{
    if (!m_module || p_at == m_lastAt) {
        return false;
    }
    // Mark the whole scene dirty once: setPos() then skips its own dirty-rect bookkeeping.
    m_document.scene().update();
    // Whole scene units: setPos() ignores a change within rounding error, so that a layout would
    // leave a fraction where it is. The remainder is carried over to the next move.
    const QPointF to = (p_at + m_module->scenePos() - m_lastAt).toPoint();
    m_lastAt += to - m_module->scenePos();
    m_module->setPos(to);
    m_module->detachFromParent();
    m_module->updateLayout();
    if (!m_module->m_moved) {
        // Once a drag: nothing is linked or unlinked under the block meanwhile.
        m_module->setTreeZValue(s_draggedZ);
    }
    m_preview.follow(m_module);
    m_document.setModified(true);
    m_module->m_moved = true;
    return true;
}

BlockDrag::End BlockDrag::release(bool p_outside, bool p_away)
{
    if (!m_module) {
        return End::Nothing;
    }
    supermodule* module = m_module;
    if (module->m_moved && p_outside && module != m_document.mainBlock()) {
        return End::Outside;
    }
    m_module.clear();
    // The first move has unlinked the block, so it is settled even where it was pressed.
    const bool settles = module->m_moved || p_away;
    if (settles) {
        putDown(module);
    }
    module->setTreeZValue(0);
    return settles ? End::Settled : End::Nothing;
}

BlockDrag::End BlockDrag::cancel()
{
    supermodule* module = m_module;
    const bool settles = module && module->m_moved;
    if (settles) {
        putDown(module);
        module->setTreeZValue(0);
    } else {
        m_preview.hide();
    }
    forget();
    return settles ? End::Settled : End::Nothing;
}

void BlockDrag::forget()
{
    if (m_module) {
        m_module.clear();
        m_abandoned();
    }
}

void BlockDrag::putDown(supermodule* p_module)
{
    p_module->m_moved = false;
    m_preview.settle(p_module);
}

ModulePlace BlockDrag::placeForUndo(const supermodule* p_module) const
{
    return p_module == m_module && p_module->m_moved ? m_pressPlace : ModulePlace::of(p_module);
}

void BlockDrag::deleteModule(supermodule* p_module)
{
    if (!p_module || p_module == m_document.mainBlock()) {
        return;
    }
    m_preview.hide();
    const ModulePlace place = placeForUndo(p_module);
    forget();
    m_document.deleteModule(p_module, place);
}
