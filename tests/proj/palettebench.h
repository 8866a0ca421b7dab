#pragma once

#include "modules/catalogue/blocktables.h"
#include "proj/binoverlay.h"
#include "proj/blockpanel.h"
#include "proj/rowpanel.h"
#include "proj/tzblockwidget.h"
#include "proj/tzlabel.h"
#include "support/system/fixturetest.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QtTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

/** How many blocks the tables have for a category. */
inline int blocksOfCategory(int p_category)
{
    const auto& records = blockRecords();
    return static_cast<int>(
        std::count_if(records.begin(), records.end(), [p_category](const BlockRecord& p_record) {
            return p_record.category == p_category;
        }));
}

/** The palette in a window such as the program's: a tool bar, a canvas, the palette below. */
struct PaletteBench {
    mutable QWidget window;
    QSplitter* splitter = new QSplitter(Qt::Vertical);
    TzBlockWidget* palette = nullptr;

    explicit PaletteBench(const QSize& p_size = QSize(700, 600))
    {
        auto* layout = new QVBoxLayout(&window);
        layout->setMargin(0);
        layout->setSpacing(0);
        auto* toolBar = new QWidget;
        toolBar->setFixedHeight(34);
        layout->addWidget(toolBar);
        splitter->setHandleWidth(0);
        splitter->addWidget(new QWidget);
        palette = new TzBlockWidget(&window, &window);
        palette->setMinimumHeight(100);
        palette->setMaximumHeight(236);
        palette->resize(p_size.width(), 236);
        splitter->addWidget(palette);
        splitter->setCollapsible(0, false);
        splitter->setCollapsible(1, false);
        layout->addWidget(splitter);
        window.resize(p_size);
        window.show();
        QCoreApplication::processEvents();
    }

    QScrollArea& area() const { return *palette->findChild<QScrollArea*>(); }
    QScrollBar& bar() const { return *area().horizontalScrollBar(); }
    BinOverlay& overlay() const { return *palette->findChild<BinOverlay*>(); }
    tzlabel& tab(int p_index) const { return *palette->folders().at(p_index); }
    RowPanel& chooser() const { return *qobject_cast<RowPanel*>(palette->panel()); }
    int blocks() const
    {
        const auto* strip = qobject_cast<BlockPanel*>(palette->panel());
        return strip ? strip->labels().size() : -1;
    }
    QColor colourAt(const QPoint& p_pos) const
    {
        return window.grab().toImage().pixelColor(palette->mapTo(&window, p_pos));
    }
    QColor ground() const { return colourAt(QPoint(palette->width() - 5, palette->height() - 40)); }
    void turnWheel(int p_delta) const
    {
        QWidget* under = palette->panel();
        QWheelEvent event(QPointF(20, 20), under->mapToGlobal(QPoint(20, 20)), QPoint(),
                          QPoint(0, p_delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        // Only an event from outside goes up to the parents of a widget that ignores it.
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(under, &event);
    }
};

/** The palette's ground under blocks and under a chooser. */
const QColor blocksGround(0x04, 0x3c, 0x66);
const QColor chooserGround(0xeb, 0xf6, 0xff);
