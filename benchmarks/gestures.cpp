#include "gestures.h"

#include "modules/mainmodule.h"
#include "proj/controls/selectablebutton.h"
#include "proj/tzblockwidget.h"

#include <QTest>

namespace
{
/** Step p_step of a hand that goes to the side and down by 160 by 100 pixels, and back. */
QPoint backAndForth(int p_step)
{
    const int way = 20 - qAbs(20 - (p_step + 1) % 40);
    return {8 * way, 5 * way};
}

void drag(Bench& p_bench, supermodule* p_module, int p_steps, Samples& p_samples)
{
    const QPoint from = p_bench.at(p_module);
    const QPointF before = p_module->scenePos();
    p_bench.press(from);
    p_bench.paint();
    for (int i = 0; i < p_steps; ++i) {
        p_bench.takePainted(p_samples, [&] { p_bench.move(from + backAndForth(i)); });
        if (i == 0 && p_module->scenePos() == before) {
            qFatal("The block doesn't move.");
        }
    }
    p_bench.release(from);
    p_bench.paint();
}

void dragHead(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    drag(p_bench, p_bench.showHead(), p_runs, p_figures[QStringLiteral("drag head")]);
}

void dragMiddle(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    drag(p_bench, p_bench.showMiddle(), p_runs, p_figures[QStringLiteral("drag middle")]);
}

/** Takes the middle off its chain and puts it back. */
void pressAndRelease(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    supermodule* middle = p_bench.showMiddle();
    const QPoint from = p_bench.at(middle);
    for (int i = 0; i < p_runs; ++i) {
        p_bench.take(p_figures[QStringLiteral("press")], [&] { p_bench.press(from); });
        p_bench.takePainted(p_figures[QStringLiteral("first move")],
                            [&] { p_bench.move(from + QPoint(4, 4)); });
        p_bench.take(p_figures[QStringLiteral("release")],
                     [&] { p_bench.release(from + QPoint(4, 4)); });
        if (!middle->parentModule() && middle != p_bench.view().mainBlock()->next()) {
            qFatal("The block was not linked again.");
        }
    }
}

void paletteDrag(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    const QPoint end = p_bench.holdBehind(p_bench.showMiddle());
    p_bench.take(p_figures[QStringLiteral("palette enter")],
                 [&] { p_bench.dragIn(end + QPoint(-600, 300)); });
    for (int i = 0; i < p_runs; ++i) {
        // In from below and along the chain, where one gap closes and the next opens.
        const QPoint way(-600 + 12 * (i % 100), qMax(0, 300 - 15 * (i % 100)));
        p_bench.take(p_figures[QStringLiteral("palette drag")], [&] { p_bench.dragOn(end + way); });
    }
    p_bench.take(p_figures[QStringLiteral("palette leave")], [&] { p_bench.dragOut(); });
}

void dropInto(Bench& p_bench, int p_runs, Samples& p_samples)
{
    supermodule* middle = p_bench.showMiddle();
    for (int i = 0; i < p_runs; ++i) {
        const QPoint end = p_bench.holdBehind(middle);
        const int before = Bench::chainLength(middle->rootOf());
        p_bench.dragIn(end);
        p_bench.dragOn(end);
        p_bench.paint();
        p_bench.takePainted(p_samples, [&] { p_bench.drop(end); });
        if (Bench::chainLength(middle->rootOf()) != before + 1) {
            qFatal("The block was not linked.");
        }
    }
}

void drop(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    dropInto(p_bench, p_runs, p_figures[QStringLiteral("drop")]);
}

/** Over blocks and their buttons, nothing pressed. */
void hoverOver(Bench& p_bench, int p_runs, Samples& p_samples)
{
    const supermodule* middle = p_bench.showMiddle();
    const QPoint from = p_bench.at(middle, QPointF(0, 90));
    const int width = p_bench.view().viewport()->width() / 3;
    for (int i = 0; i < p_runs; ++i) {
        const QPoint to = from + QPoint(9 * i % width, 11 * i % 50);
        p_bench.take(p_samples, [&] { p_bench.move(to, Qt::NoButton); });
    }
}

void hover(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    hoverOver(p_bench, p_runs, p_figures[QStringLiteral("hover")]);
}

/** The same with the C text shown. */
template <class Gesture> void besideCode(Bench& p_bench, Gesture p_gesture)
{
    const int c = 1;
    p_bench.window().OnShowCode(c);
    p_bench.paint();
    p_gesture();
    p_bench.window().OnShowCode(c);
    p_bench.paint();
}

void dropBesideCode(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    besideCode(p_bench,
               [&] { dropInto(p_bench, p_runs, p_figures[QStringLiteral("drop, C shown")]); });
}

void hoverBesideCode(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    besideCode(p_bench,
               [&] { hoverOver(p_bench, p_runs, p_figures[QStringLiteral("hover, C shown")]); });
}

void scroll(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    p_bench.showMiddle();
    const QPoint strip(400, p_bench.view().viewport()->height() - 50);
    for (int i = 0; i < p_runs; ++i) {
        p_bench.takePainted(p_figures[QStringLiteral("scroll")],
                            [&] { p_bench.wheel(strip, i % 20 < 10 ? 120 : -120); });
    }
}

/** By a press on the ground, away from the scene's corner, where a short program stands. */
void pan(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    p_bench.showMiddle();
    QPoint ground(200, 120);
    while (p_bench.view().itemAt(ground) && ground.y() < p_bench.view().viewport()->height()) {
        ground.ry() += 2;
    }
    p_bench.press(ground);
    p_bench.paint();
    for (int i = 0; i < p_runs; ++i) {
        p_bench.takePainted(p_figures[QStringLiteral("pan")],
                            [&] { p_bench.move(ground - backAndForth(i)); });
    }
    p_bench.release(ground);
    p_bench.paint();
}

void zoom(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    p_bench.showMiddle();
    TzProgramView& view = p_bench.view();
    const int first = view.zoomFactor() < 1.5 ? 1 : -1;
    for (int i = 0; i < p_runs; ++i) {
        p_bench.takePainted(p_figures[QStringLiteral("zoom step")],
                            [&] { view.zoomView(i % 2 == 0 ? first : -first); });
    }
}

void deleteMiddle(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    supermodule* middle = p_bench.showMiddle();
    const supermodule* root = middle->rootOf();
    const QPoint at = p_bench.at(middle);
    const int before = Bench::chainLength(root);
    for (int i = 0; i < p_runs; ++i) {
        p_bench.press(at);
        p_bench.release(at);
        p_bench.paint();
        p_bench.takePainted(p_figures[QStringLiteral("delete half")],
                            [&] { p_bench.key(Qt::Key_Delete); });
        const int left = Bench::chainLength(root);
        p_bench.takePainted(p_figures[QStringLiteral("undo delete")],
                            [&] { p_bench.key(Qt::Key_Z, Qt::ControlModifier); });
        if (left >= before || Bench::chainLength(root) != before) {
            qFatal("The block was not deleted and brought back.");
        }
        p_bench.takePainted(p_figures[QStringLiteral("redo delete")],
                            [&] { p_bench.key(Qt::Key_Y, Qt::ControlModifier); });
        p_bench.key(Qt::Key_Z, Qt::ControlModifier);
        p_bench.paint();
    }
}

void paste(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    const QPoint at = p_bench.at(p_bench.showMiddle());
    for (int i = 0; i < p_runs; ++i) {
        p_bench.press(at);
        p_bench.release(at);
        p_bench.paint();
        const int before = p_bench.view().scene()->items().size();
        p_bench.takePainted(p_figures[QStringLiteral("copy half")],
                            [&] { p_bench.key(Qt::Key_C, Qt::ControlModifier); });
        p_bench.takePainted(p_figures[QStringLiteral("paste half")],
                            [&] { p_bench.key(Qt::Key_V, Qt::ControlModifier); });
        if (p_bench.view().scene()->items().size() <= before) {
            qFatal("Nothing was pasted.");
        }
        p_bench.takePainted(p_figures[QStringLiteral("undo paste")],
                            [&] { p_bench.key(Qt::Key_Z, Qt::ControlModifier); });
        p_bench.takePainted(p_figures[QStringLiteral("redo paste")],
                            [&] { p_bench.key(Qt::Key_Y, Qt::ControlModifier); });
        p_bench.key(Qt::Key_Z, Qt::ControlModifier);
        p_bench.paint();
    }
}

void open(Bench& p_bench, const QString& p_path, int p_runs, Figures& p_figures)
{
    for (int i = 0; i < p_runs; ++i) {
        p_bench.clear();
        p_bench.takePainted(p_figures[QStringLiteral("open")], [&] { p_bench.open(p_path); });
    }
}

void clear(Bench& p_bench, const QString& p_path, int p_runs, Figures& p_figures)
{
    for (int i = 0; i < p_runs; ++i) {
        p_bench.open(p_path);
        p_bench.takePainted(p_figures[QStringLiteral("clear")], [&] { p_bench.clear(); });
    }
}

void save(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    for (int i = 0; i < p_runs; ++i) {
        p_figures[QStringLiteral("save")].take([&] {
            if (p_bench.window().OnSaveFile() != 0) {
                qFatal("The program could not be saved.");
            }
        });
    }
}

void generate(Bench& p_bench, const QString&, int p_runs, Figures& p_figures)
{
    for (int i = 0; i < p_runs; ++i) {
        p_figures[QStringLiteral("generate")].take([&] { p_bench.view().generateProjectCode(1); });
    }
}

const QVector<Operation> s_operations = {
    {"open", false, {9, 5, 2}, open},
    {"save", false, {9, 5, 3}, save},
    {"generate", false, {25, 9, 5}, generate},
    {"delete", false, {9, 5, 1}, deleteMiddle},
    {"paste", false, {9, 5, 1}, paste},
    {"code drop", false, {20, 10, 3}, dropBesideCode},
    {"code hover", false, {200, 100, 20}, hoverBesideCode},
    {"press", true, {40, 20, 5}, pressAndRelease},
    {"drag head", true, {200, 100, 20}, dragHead},
    {"drag middle", true, {200, 100, 20}, dragMiddle},
    {"palette drag", true, {200, 100, 20}, paletteDrag},
    {"drop", true, {20, 10, 3}, drop},
    {"hover", true, {200, 100, 20}, hover},
    {"scroll", true, {80, 40, 20}, scroll},
    {"pan", true, {200, 100, 20}, pan},
    {"zoom step", true, {20, 20, 10}, zoom},
    {"clear", false, {9, 5, 2}, clear},
};
} // namespace

const QVector<Operation>& operations() { return s_operations; }

void measurePalette(Bench& p_bench, int p_rounds, Figures& p_figures)
{
    TzBlockWidget& palette = *p_bench.window().blockWidget();
    const auto show = [&](auto p_chooser) {
        p_bench.take(p_figures[QStringLiteral("chooser")], p_chooser);
    };
    for (int i = 0; i < p_rounds; ++i) {
        for (int tab = palette.folders().size() - 1; tab >= 0; --tab) {
            p_bench.take(p_figures[QStringLiteral("tab")],
                         [&] { QTest::mouseClick(palette.folders().at(tab), Qt::LeftButton); });
        }
        show([&] {
            palette.OnShowNumKeyboardSignal(KeyboardDigits | KeyboardPoint | KeyboardDelete);
        });
        for (const int type : {1, 2}) {
            show([&] { palette.onShowPanelSignal(type, 0); });
        }
        for (const int key : TzBlockWidget::voicePictures().keys()) {
            show([&] { palette.OnShowVoiceSignal(key); });
        }
        for (const int key : TzBlockWidget::expressionPictures().keys()) {
            show([&] { palette.OnShowExpressionSignal(key); });
        }
    }
    QTest::mouseClick(palette.folders().first(), Qt::LeftButton);
    p_bench.paint();
}
