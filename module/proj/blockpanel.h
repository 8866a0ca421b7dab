#pragma once

#include "modules/catalogue/blocktables.h"
#include "proj/panelbase.h"

#include <QList>
#include <QMap>

class QDrag;
class QLabel;

/** The blocks of a category, to be dragged onto the canvas. */
class BlockPanel : public PanelBase
{
    Q_OBJECT

public:
    explicit BlockPanel(int p_category, QWidget* p_parent = nullptr);

    void setPanelHeight(int p_height) override;

    /** A label for each block, in the order of the strip. */
    const QList<QLabel*>& labels() const { return m_labels; }

protected:
    void mousePressEvent(QMouseEvent* p_event) override;
    /** Runs a drag to its end. The panel may be gone when this returns. */
    virtual void runDrag(QDrag& p_drag);

private:
    int m_category;
    QMap<QLabel*, BlockRecord> m_records;
    QList<QLabel*> m_labels;
    /** What the pictures are scaled for; -1 before the first time. */
    int m_laidOutHeight = -1;
};
