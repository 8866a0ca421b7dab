#pragma once

#include "modules/graphicsitem_param.h"
#include "modules/supermodule.h"
#include "support/canvas/canvasfixture.h"
#include "support/system/fixturetest.h"

#include <QGraphicsProxyWidget>
#include <QtTest>

/** What stands behind an angle. */
const QString s_degree = QString(QChar(0xb0));

/** A canvas, what its blocks ask the palette for, and hands for buttons. */
class Bench : public CanvasFixture
{
public:
    Bench()
    {
        QObject::connect(
            &view, &TzProgramView::showNumKeyboardSignal, &view,
            [this](uint32_t p_option) { raised << QStringLiteral("number %1").arg(p_option); });
        QObject::connect(&view, &TzProgramView::showVoiceSignal, &view,
                         [this](int p_map) { raised << QStringLiteral("voice %1").arg(p_map); });
        QObject::connect(&view, &TzProgramView::showExpressionSignal, &view, [this](int p_map) {
            raised << QStringLiteral("expression %1").arg(p_map);
        });
        QObject::connect(&view, &TzProgramView::showPanelSignal, &view,
                         [this](int p_type, int p_id) {
                             raised << QStringLiteral("panel %1 %2").arg(p_type).arg(p_id);
                         });
        view.activateWindow();
        if (!QTest::qWaitForWindowActive(&view)) {
            qFatal("the window doesn't become active");
        }
        // A pop-up of an earlier canvas went with its scene.
        Q_ASSERT(!graphicsItem_Param::existing());
    }

    /** A loose block in the middle of the canvas. */
    supermodule* seen(int p_id, const QPointF& p_at = QPointF(500, 330))
    {
        return drop(p_id, p_at);
    }

    /** The widgets of a block or of the pop-up that are in the scene now. */
    static QList<QGraphicsProxyWidget*> proxies(const QGraphicsItem* p_item)
    {
        QList<QGraphicsProxyWidget*> list;
        const QList<QGraphicsItem*> children = p_item->childItems();
        for (QGraphicsItem* child : children) {
            if (child->type() == QGraphicsProxyWidget::Type) {
                list.append(static_cast<QGraphicsProxyWidget*>(child));
            }
        }
        return list;
    }

    void clickProxy(const QGraphicsProxyWidget* p_proxy)
    {
        click(p_proxy->sceneBoundingRect().center());
    }
    /** Where a button is in the scene. */
    static QRectF placeOf(supermodule* p_module, int p_index)
    {
        return p_module->mapRectToScene(p_module->buttonRect(p_index));
    }
    void clickButton(supermodule* p_module, int p_index)
    {
        click(placeOf(p_module, p_index).center());
    }
    /** Chooses an entry of the pop-up by the mouse. */
    void choose(int p_index) { clickProxy(proxies(popUp()).at(p_index)); }
    static graphicsItem_Param* popUp() { return graphicsItem_Param::existing(); }
    static bool popUpIsOpen() { return popUp() && popUp()->isVisible(); }

    /** Types on the computer's keyboard; '<' stands for Backspace. */
    void type(const QString& p_keys)
    {
        for (const QChar ch : p_keys) {
            if (ch == QLatin1Char('<')) {
                QTest::keyClick(view.viewport(), Qt::Key_Backspace);
            } else {
                QTest::keyClick(view.viewport(), ch.toLatin1());
            }
        }
    }
    /** The same on the number keyboard of the palette. */
    void tap(const QString& p_keys)
    {
        for (const QChar ch : p_keys) {
            view.OnSelectNumberSignal(ch == QLatin1Char('<') ? int(Qt::Key_Backspace)
                                                             : int(ch.unicode()));
        }
    }

    QStringList raised;
};
