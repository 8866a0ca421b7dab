#pragma once

#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/supermodule.h"
#include "proj/panelbase.h"
#include "proj/tzblockwidget.h"
#include "shell/mainwindow.h"
#include "shell/tztoolbar.h"
#include "support/canvas/canvashands.h"
#include "support/system/fixturetest.h"

#include <QApplication>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

/** The real window, shown, with an empty project at a scale of 1, and the hands that use it. */
class WindowBench
{
public:
    WindowBench() : hands(*window.view())
    {
        window.resize(1280, 768);
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("the window doesn't become active");
        }
        TzProgramView& view = canvas();
        view.resetMatrix();
        hands.main()->setPos(4000, 4000);
        view.centerOn(4400, 4150);
        QCoreApplication::processEvents();
    }
    ~WindowBench() { documentModified = false; }
    Q_DISABLE_COPY(WindowBench)

    TzToolBar& bar() { return *window.toolBar(); }
    TzBlockWidget& palette() { return *window.blockWidget(); }
    TzProgramView& canvas() { return *window.view(); }
    QString path(const char* p_name = "a.tlrx") const
    {
        return dir.filePath(QLatin1String(p_name));
    }

    /** A new block at the end of the main program. */
    supermodule* add(int p_id) { return hands.dropBehind(hands.main()->lastOf(), p_id); }
    QList<int> program() const { return CanvasHands::ids(hands.main()); }

    /** A button of the tool bar by its tool tip; the one without any is the "more" button. */
    QPushButton& tool(const QString& p_toolTip)
    {
        const QList<QPushButton*> buttons =
            bar().findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly);
        for (QPushButton* button : buttons) {
            if (button->toolTip() == p_toolTip) {
                return *button;
            }
        }
        qFatal("no button of this tool tip");
    }
    void click(QWidget& p_widget) { QTest::mouseClick(&p_widget, Qt::LeftButton); }
    /** Clicks a block at a point of its own. */
    void clickAt(const supermodule* p_block, const QPointF& p_at)
    {
        hands.click(p_block->scenePos() + p_at);
    }
    /** The buttons of the chooser in the palette, from left to right. */
    QList<QPushButton*> chooser()
    {
        return palette().isChoosing() && palette().panel()
                   ? palette().panel()->findChildren<QPushButton*>()
                   : QList<QPushButton*>();
    }
    QString chooserTexts()
    {
        QStringList texts;
        const QList<QPushButton*> buttons = chooser();
        for (const QPushButton* button : buttons) {
            texts.append(button->text());
        }
        return texts.join(QLatin1Char(' '));
    }
    /** Presses on the ground beside all blocks. */
    void clickGround()
    {
        QTest::mouseClick(canvas().viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(canvas().viewport()->width() - 30, 20));
    }

    QTemporaryDir dir;
    MainWindow window;
    CanvasHands hands;
};
