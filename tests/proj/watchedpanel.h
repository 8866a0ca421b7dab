#pragma once

#include "proj/blockpanel.h"

#include <QDrag>

#include <functional>

/** A shown strip of actions whose drags end at once, after what happens in them. */
class WatchedPanel : public BlockPanel
{
public:
    WatchedPanel() : BlockPanel(0)
    {
        setPanelHeight(120);
        show();
    }

    std::function<void(QDrag&)> m_onDrag;

protected:
    void runDrag(QDrag& p_drag) override
    {
        if (m_onDrag) {
            m_onDrag(p_drag);
        }
        // A platform deletes the drag when it has ended.
        p_drag.deleteLater();
    }
};
