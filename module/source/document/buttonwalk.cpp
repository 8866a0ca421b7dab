#include "document/buttonwalk.h"

#include "document/programslots.h"
#include "modules/graphicsitem_param.h"
#include "modules/moduletree.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QPushButton>

#include <algorithm>

namespace
{
/** A button on a block or, without a block, on the pop-up. */
struct Stop {
    supermodule* module;
    int index;

    /** The button's proxy; null as long as it has no widget. */
    QGraphicsProxyWidget* proxy() const
    {
        const QPushButton* button = module ? module->liveButton(index)
                                           : graphicsItem_Param::existing()->buttons().at(index);
        return button ? button->graphicsProxyWidget() : nullptr;
    }
};

QRectF sightOf(const QGraphicsScene& p_scene)
{
    const QList<QGraphicsView*> views = p_scene.views();
    if (views.isEmpty()) {
        return p_scene.sceneRect();
    }
    return views.first()->mapToScene(views.first()->viewport()->rect()).boundingRect();
}

QVector<Stop> stopsInSight(const QGraphicsScene& p_scene)
{
    const QRectF sight = sightOf(p_scene);
    const graphicsItem_Param* popUp = graphicsItem_Param::existing();
    const supermodule* choosing =
        popUp && popUp->isVisible() && popUp->scene() == &p_scene ? popUp->module() : nullptr;
    QVector<Stop> stops;
    const auto addButtons = [&](supermodule* p_module) {
        for (int i = 0; p_module->isVisible() && i < p_module->buttonCount(); ++i) {
            if (sight.intersects(p_module->mapRectToScene(p_module->buttonRect(i)))) {
                stops.append({p_module, i});
            }
        }
        for (int i = 0; p_module == choosing && i < popUp->buttons().size(); ++i) {
            stops.append({nullptr, i});
        }
    };
    QList<supermodule*> roots = rootBlocks(p_scene);
    // The oldest, which is the main block, lies undermost.
    std::reverse(roots.begin(), roots.end());
    for (supermodule* root : qAsConst(roots)) {
        forEachModule(root, addButtons);
    }
    return stops;
}
} // namespace

bool focusNextButton(QGraphicsScene& p_scene, bool p_next)
{
    const QVector<Stop> stops = stopsInSight(p_scene);
    int at = p_next ? 0 : stops.size() - 1;
    if (const QGraphicsItem* focused = p_scene.focusItem()) {
        for (int i = 0; i < stops.size(); ++i) {
            if (stops.at(i).proxy() == focused) {
                at = p_next ? i + 1 : i - 1;
            }
        }
    }
    if (at < 0 || at >= stops.size()) {
        // Else the scene would keep it for the button, which would keep its widget for that.
        p_scene.setFocusItem(nullptr);
        return false;
    }
    const Stop& stop = stops.at(at);
    if (stop.module) {
        stop.module->wakeButton(stop.index);
    }
    stop.proxy()->setFocus(p_next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}
