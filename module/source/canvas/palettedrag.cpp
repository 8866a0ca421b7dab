#include "canvas/palettedrag.h"

#include "canvas/linkpreview.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/moduleregistry.h"

#include <QGraphicsScene>

PaletteDrag::PaletteDrag(QGraphicsScene& p_scene, LinkPreview& p_preview)
    : m_scene(p_scene), m_preview(p_preview)
{
}

PaletteDrag::~PaletteDrag() { leave(); }

supermodule* PaletteDrag::enter(int p_id)
{
    leave();
    m_module = createModuleFromId(p_id);
    if (m_module) {
        ModuleRegistry::add(m_module);
        m_module->hide();
        m_module->enterScene(&m_scene);
    }
    return m_module;
}

void PaletteDrag::move(const QPointF& p_corner)
{
    if (m_module) {
        // It is hidden, so that its own moves are of no matter to the scene.
        m_module->setPos(p_corner);
        m_preview.follow(m_module);
    }
}

supermodule* PaletteDrag::drop()
{
    supermodule* module = m_module;
    m_module.clear();
    if (module) {
        module->show();
        m_preview.settle(module);
    }
    return module;
}

void PaletteDrag::leave()
{
    m_preview.hide();
    if (m_module) {
        if (supermodule* behind = m_module->next()) {
            m_module->removeChild(behind);
        }
        m_module->detachFromParent();
        supermodule::deleteTree(m_module);
    }
}
