#include "base/config.h"
#include "base/recentfiles.h"
#include "proj/binoverlay.h"
#include "proj/tzlabel.h"
#include "support/system/datatable.h"
#include "windowbench.h"

#include <QAction>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRegExpValidator>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QTextBrowser>
#include <QTimer>

#include <functional>

namespace
{
/** What is told of a part: a property of Qt's, or one of those in s_readers. */
struct Fact {
    QString part;
    QString property;
    QVariant told;
};

const QVariant s_expanding = QStringLiteral("7 7");
const char s_menuStyle[] = "QMenu{background-color:white;border:none;}"
                           "QMenu::item{font-size:10pt;color:#333333;padding:1px 26px;height:24px;}"
                           "QMenu::item:selected{color:white;background-color:rgb(76,199,219);}"
                           "QMenu::item:pressed{color:white;background-color:rgb(76,199,219);}"
                           "QMenu::item:disabled{color:#999999;background-color:white;}";

/** The style sheet of a button of the bar, by its pictures' common name. */
QString toolStyle(const char* p_normal, const char* p_others)
{
    return QStringLiteral("QPushButton {color:white;border-image:url(:/%1.png);}"
                          "QPushButton:hover {border-image:url(:/%2-hover.png);}"
                          "QPushButton:pressed {border-image:url(:/%2-pre.png);}"
                          "QPushButton::menu-indicator{image:none;}")
        .arg(QLatin1String(p_normal), QLatin1String(p_others));
}

QString describe(const QMargins& p_margins)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(p_margins.left())
        .arg(p_margins.top())
        .arg(p_margins.right())
        .arg(p_margins.bottom());
}

/** The entries of a menu: text, shortcut in brackets, an x for a disabled one, - for a line. */
QString entriesOf(const QMenu& p_menu)
{
    QStringList entries;
    const QList<QAction*> actions = p_menu.actions();
    for (const QAction* action : actions) {
        if (action->isSeparator()) {
            entries << QStringLiteral("-");
            continue;
        }
        QString entry = action->text();
        if (!action->shortcut().isEmpty()) {
            entry += QLatin1Char('[') + action->shortcut().toString() + QLatin1Char(']');
        }
        entries << entry + QLatin1String(action->isEnabled() ? "" : "x");
    }
    return entries.join(QLatin1Char(' '));
}

template <typename Part> Part& as(QObject& p_object) { return *qobject_cast<Part*>(&p_object); }
QWidget& widget(QObject& p_object) { return as<QWidget>(p_object); }

/** What Qt has no property for. */
const QMap<QString, std::function<QVariant(QObject&)>> s_readers{
    {"font pixels", [](QObject& o) { return widget(o).font().pixelSize(); }},
    {"size policy",
     [](QObject& o) {
         const QSizePolicy policy = widget(o).sizePolicy();
         return QStringLiteral("%1 %2").arg(policy.horizontalPolicy()).arg(policy.verticalPolicy());
     }},
    {"layout", [](QObject& o) { return widget(o).layout()->metaObject()->className(); }},
    {"text margins", [](QObject& o) { return describe(as<QLineEdit>(o).textMargins()); }},
    {"layout margins", [](QObject& o) { return describe(widget(o).layout()->contentsMargins()); }},
    {"layout spacing", [](QObject& o) { return widget(o).layout()->spacing(); }},
    {"entries", [](QObject& o) { return entriesOf(as<QMenu>(o)); }},
    {"menu", [](QObject& o) { return entriesOf(*as<QPushButton>(o).menu()); }},
    {"shortcut", [](QObject& o) { return as<QPushButton>(o).shortcut().toString(); }},
    {"validator",
     [](QObject& o) {
         return qobject_cast<const QRegExpValidator*>(as<QLineEdit>(o).validator())
             ->regExp()
             .pattern();
     }},
    {"collapsible",
     [](QObject& o) {
         const auto& splitter = as<QSplitter>(o);
         return QStringLiteral("%1 %2")
             .arg(int(splitter.isCollapsible(0)))
             .arg(int(splitter.isCollapsible(1)));
     }},
    {"ground",
     [](QObject& o) {
         const QPalette colours = widget(o).palette();
         QStringList groups;
         for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
             groups << colours.color(group, QPalette::Window).name();
         }
         return groups.join(QLatin1Char(' '));
     }},
    {"translucent",
     [](QObject& o) { return widget(o).testAttribute(Qt::WA_TranslucentBackground); }},
    {"lets the mouse through",
     [](QObject& o) { return widget(o).testAttribute(Qt::WA_TransparentForMouseEvents); }},
    {"smooth pictures",
     [](QObject& o) {
         return as<QGraphicsView>(o).renderHints().testFlag(QPainter::SmoothPixmapTransform);
     }},
    {"background",
     [](QObject& o) {
         return widget(o).palette().brush(widget(o).backgroundRole()).texture().size();
     }},
    {"read only", [](QObject& o) { return as<QTextBrowser>(o).isReadOnly(); }},
    {"picture",
     [](QObject& o) {
         auto* tab = qobject_cast<tzlabel*>(&o);
         return tab ? tab->imagePath() : as<BinOverlay>(o).imagePath();
     }},
    {"category", [](QObject& o) { return as<tzlabel>(o).categoryId(); }},
    {"tab is active", [](QObject& o) { return as<tzlabel>(o).isActive(); }},
};

QVariant read(QObject& p_part, const QString& p_property)
{
    const auto reader = s_readers.constFind(p_property);
    return reader != s_readers.constEnd() ? (*reader)(p_part)
                                          : p_part.property(p_property.toLatin1().constData());
}

/** The tabs' size and gap on this screen, by the rule for them: whole numbers, held at the ends. */
int between(int p_value, int p_low, int p_high, int p_least, int p_most)
{
    const int held = qBound(p_low, p_value, p_high);
    return (p_most - p_least) * (held - p_low) / (p_high - p_low) + p_least;
}

/** The parts of a window by the names that the facts know them by. */
QMap<QString, QObject*> partsOf(WindowBench& p_bench)
{
    TzToolBar& bar = p_bench.bar();
    TzBlockWidget& palette = p_bench.palette();
    TzProgramView& canvas = p_bench.canvas();
    QSplitter* inner = qobject_cast<QSplitter*>(canvas.parentWidget());
    QWidget* notice = bar.findChild<QWidget*>(QStringLiteral("infoBg"));
    QMap<QString, QObject*> parts{
        {"window", &p_bench.window},
        {"central widget", p_bench.window.centralWidget()},
        {"bar", &bar},
        {"file button", &p_bench.tool(QStringLiteral("文件"))},
        {"zoom in button", &p_bench.tool(QStringLiteral("放大"))},
        {"zoom reset button", &p_bench.tool(QStringLiteral("重置缩放"))},
        {"zoom out button", &p_bench.tool(QStringLiteral("缩小"))},
        {"download button", &p_bench.tool(QStringLiteral("下载"))},
        {"recent button", &p_bench.tool(QStringLiteral("最近文档"))},
        {"code button", &p_bench.tool(QStringLiteral("C 语言程序"))},
        {"more button", &p_bench.tool(QString())},
        {"file menu", p_bench.tool(QStringLiteral("文件")).menu()},
        {"more menu", p_bench.tool(QString()).menu()},
        {"recent menu", &bar.recentMenu()},
        {"name label", bar.findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly)},
        {"name field", bar.findChild<QLineEdit*>()},
        {"info area", notice->parentWidget()},
        {"notice", notice},
        {"notice text", notice->findChild<QLabel*>()},
        {"notice button", notice->findChild<QPushButton*>(QStringLiteral("info_button"))},
        {"code pane", p_bench.window.codeBrowser()},
        {"upper splitter", inner},
        {"splitter", inner->parentWidget()},
        {"palette", &palette},
        {"colour bar", palette.layout()->itemAt(0)->widget()},
        {"strip", palette.findChild<QScrollArea*>()},
        {"bin", palette.findChild<BinOverlay*>()},
        {"canvas", &canvas},
        {"scene", canvas.scene()},
        {"context menu", &canvas.contextMenu()},
    };
    for (int i = 0; i < palette.folders().size(); ++i) {
        parts.insert(QStringLiteral("tab %1").arg(i + 1), palette.folders().at(i));
    }
    const QList<QWidget*> children =
        canvas.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* child : children) {
        if (child->styleSheet().contains(QStringLiteral("border-radius: 10px"))) {
            parts.insert(QStringLiteral("wheel strip"), child);
        }
    }
    for (QTimer* timer : canvas.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (timer->isSingleShot()) {
            parts.insert(QStringLiteral("wheel timer"), timer);
        }
    }
    return parts;
}

/** The names of what lies in a box, in order; a stretch by its factor. */
QString contentOf(const QMap<QString, QObject*>& p_parts, const QBoxLayout& p_layout)
{
    QStringList names;
    for (int i = 0; i < p_layout.count(); ++i) {
        if (QWidget* item = p_layout.itemAt(i)->widget()) {
            names << p_parts.key(item);
        } else if (p_layout.stretch(i) > 0) {
            names << QStringLiteral("stretch %1").arg(p_layout.stretch(i));
        }
    }
    return names.join(QStringLiteral(", "));
}

QVector<Fact> facts()
{
    QVector<Fact> list{
        {"window", "acceptDrops", true},
        {"central widget", "layout", "QVBoxLayout"},
        {"central widget", "layout margins", "0 0 0 0"},
        {"central widget", "layout spacing", 0},

        {"bar", "minimumHeight", 34},
        {"bar", "maximumHeight", 34},
        {"bar", "autoFillBackground", true},
        {"bar", "ground", "#00afcc #00afcc #00afcc"},
        {"bar", "layout", "QHBoxLayout"},
        {"bar", "layout margins", "0 0 0 0"},
        {"bar", "layout spacing", 0},

        {"file button", "toolTip", "文件"},
        {"file button", "styleSheet", toolStyle("wenjian-nol", "wenjian")},
        {"file button", "shortcut", ""},
        {"file button", "menu",
         "新建[Ctrl+N] 打开[Ctrl+O] 保存[Ctrl+S] 另存为[Ctrl+A] - 关闭[Ctrl+Q]"},
        {"zoom in button", "toolTip", "放大"},
        {"zoom in button", "styleSheet", toolStyle("fangda-nol", "fangda")},
        {"zoom in button", "shortcut", QKeySequence(QKeySequence::ZoomIn).toString()},
        {"zoom reset button", "toolTip", "重置缩放"},
        {"zoom reset button", "styleSheet", toolStyle("normal_scale", "normal_scale")},
        {"zoom reset button", "shortcut", ""},
        {"zoom out button", "toolTip", "缩小"},
        {"zoom out button", "styleSheet", toolStyle("suoxiao-nol", "suoxiao")},
        {"zoom out button", "shortcut", QKeySequence(QKeySequence::ZoomOut).toString()},
        {"download button", "toolTip", "下载"},
        {"download button", "styleSheet", toolStyle("xiazai-nol", "xiazai")},
        {"download button", "shortcut", ""},
        {"recent button", "pos", QPoint(1280 - 78 - 2 * 68, 0)},
        {"recent button", "size", QSize(68, 34)},
        {"code button", "pos", QPoint(1280 - 78 - 68, 0)},
        {"code button", "size", QSize(68, 34)},
        {"more button", "toolTip", ""},
        {"more button", "styleSheet", toolStyle("gengduo-nol", "gengduo")},
        {"more button", "menu", "选择控制器x - 固件升级 检测软件更新 - 关于"},
        {"more button", "pos", QPoint(1280 - 78, 0)},
        {"file menu", "styleSheet", s_menuStyle},
        {"more menu", "styleSheet", s_menuStyle},
        {"recent menu", "styleSheet", s_menuStyle},
        {"recent menu", "title", "最近文档"},
        {"recent menu", "entries", ""},

        {"name label", "font pixels", 14},
        {"name label", "alignment", int(Qt::AlignRight | Qt::AlignVCenter)},
        {"name label", "text", " 程序名: "},
        {"name label", "styleSheet", "color:rgb(255, 255, 255);"},
        {"name label", "size policy", s_expanding},
        {"name field", "alignment", int(Qt::AlignLeft | Qt::AlignVCenter)},
        {"name field", "text margins", "6 0 22 0"},
        {"name field", "validator", "[a-zA-Z0-9]{0,6}"},
        {"name field", "text", "RunA"},
        {"name field", "minimumSize", QSize(140, 24)},
        {"name field", "maximumSize", QSize(140, 24)},
        {"name field", "styleSheet",
         "QLineEdit{border:none;font:12px;background-color:transparent;"
         "background-image:url(:/run-nol-140x24.png);}"
         "QLineEdit:enabled:hover{background-image:url(:/run-pre-140x24.png);}"
         "QLineEdit:enabled:focus{background-image:url(:/run-pre-140x24.png);}"},

        {"info area", "layout", "QHBoxLayout"},
        {"info area", "layout margins", "2 2 2 2"},
        {"notice", "layout", "QHBoxLayout"},
        {"notice", "layout margins", "3 3 3 3"},
        {"notice", "styleSheet",
         "QWidget#infoBg{border: none; border-radius:5px;background-color: rgba(0, 0, 0, 20%);}"},
        {"notice text", "text", "控制器固件有新的版本，请更新"},
        {"notice text", "styleSheet", "color:rgb(255,255,255)"},
        {"notice button", "text", " 更新 "},
        {"notice button", "size policy", s_expanding},
        {"notice button", "styleSheet",
         "QPushButton#info_button{border-radius:3px;color:white;"
         "border: 1px solid rgba(0, 0, 0, 20%);background-color: rgba(100, 100, 100, 20%);}"
         "QPushButton#info_button:hover{background-color: rgba(255, 255, 255, 20%);}"
         "QPushButton#info_button:pressed{background-color: rgba(0, 0, 0, 20%);}"},

        {"code pane", "visible", false},
        {"code pane", "font pixels", 12},
        {"code pane", "read only", true},
        {"code pane", "lineWrapMode", int(QTextEdit::NoWrap)},
        {"splitter", "orientation", int(Qt::Vertical)},
        {"splitter", "handleWidth", 0},
        {"splitter", "collapsible", "0 0"},
        {"upper splitter", "orientation", int(Qt::Horizontal)},

        {"palette", "minimumHeight", 100},
        {"palette", "maximumHeight", 236},
        {"palette", "size", QSize(1280, 236)},
        {"palette", "styleSheet", "background-color:transparent;"},
        {"palette", "layout", "QVBoxLayout"},
        {"palette", "layout margins", "0 0 0 0"},
        {"palette", "layout spacing", 0},
        {"colour bar", "minimumHeight", 24},
        {"colour bar", "maximumHeight", 24},
        {"strip", "frameShape", 0},
        {"strip", "focusPolicy", int(Qt::NoFocus)},
        {"strip", "styleSheet",
         "QScrollBar:vertical {border: none; background: rgb(189,229,238);width: 16px;}"
         "QScrollBar::handle:vertical {background: rgb(0,152,179);min-height: 80px; border:none;}"
         "QScrollBar:horizontal  {border: none; background: rgb(189,229,238);height: 16px;}"
         "QScrollBar::handle:horizontal  {background: rgb(0,152,179);min-width: 80px; "
         "border:none;}"},
        {"bin", "visible", false},
        {"bin", "geometry", QRect(0, 0, 1281, 237)},

        {"canvas", "acceptDrops", true},
        {"canvas", "focus", true},
        {"canvas", "dragMode", int(QGraphicsView::ScrollHandDrag)},
        {"canvas", "translucent", true},
        {"canvas", "styleSheet", "QGraphicsView{border:0px;}"},
        {"canvas", "autoFillBackground", true},
        {"canvas", "smooth pictures", true},
        // 1186 by 674 within 1280 by 498, the room between bar and palette.
        {"canvas", "background", QSize(876, 498)},
        {"canvas", "horizontalScrollBarPolicy", int(Qt::ScrollBarAlwaysOff)},
        {"canvas", "verticalScrollBarPolicy", int(Qt::ScrollBarAlwaysOff)},
        {"scene", "sceneRect", QRectF(0, 0, 10000, 10000)},
        {"context menu", "styleSheet", s_menuStyle},
        {"context menu", "entries", "复制[Ctrl+C] 黏贴[Ctrl+V] 复制并黏贴 取消复制 删除"},
        {"wheel strip", "visible", false},
        {"wheel strip", "lets the mouse through", true},
        {"wheel strip", "styleSheet",
         "QWidget {border: none; background: rgba(0,0,0, 10%); border-radius: 10px;}"},
        {"wheel timer", "active", false},
    };
    for (const char* button : {"file", "zoom in", "zoom reset", "zoom out", "download", "more"}) {
        const QString part = QLatin1String(button) + QStringLiteral(" button");
        list.append({part, "minimumWidth", 68});
        list.append({part, "maximumWidth", 68});
        list.append({part, "size policy", s_expanding});
    }
    const struct {
        const char* text;
        const char* picture;
        int category;
    } tabs[] = {{"动作", ":/dongzuo-pre.png", 0},
                {"声音", ":/shengyin-nol.png", 7},
                {"表情", ":/biaoqing-nol.png", 8},
                {"控制", ":/kongzhi-nol.png", 2}};
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    const int width = between(screen.width(), 1280, 1920, 90, 180);
    const int height = between(screen.height(), 768, 1080, 32, 64);
    const int gap = between(screen.height(), 768, 1080, 5, 10);
    const int top = 768 - 236 - height;
    for (int i = 0; i < 4; ++i) {
        const QString part = QStringLiteral("tab %1").arg(i + 1);
        list.append({part, "text", tabs[i].text});
        list.append({part, "picture", tabs[i].picture});
        list.append({part, "category", tabs[i].category});
        list.append({part, "tab is active", i == 0});
        list.append({part, "visible", true});
        list.append({part, "focusPolicy", int(Qt::NoFocus)});
        list.append({part, "geometry", QRect((width + gap) * i + 6, top, width, height)});
    }
    return list;
}
} // namespace

/** How the window, its bar, canvas and palette look: all that is laid down of their values. */
class LooksTest : public FixtureTest<WindowBench>
{
    Q_OBJECT

private slots:
    void init()
    {
        recentFiles.clear();
        QFile::remove(recentFilesPath());
        setString(QStringLiteral("fw.update_time"), QString());
        m_bench.emplace();
        m_bench->bar().showFirmwareNotice();
        QCoreApplication::processEvents();
    }

    void everyPartIsAsTold_data()
    {
        QTest::addColumn<QString>("part");
        const QVector<Fact> all = facts();
        QStringList parts;
        for (const Fact& fact : all) {
            if (!parts.contains(fact.part)) {
                parts << fact.part;
                QTest::newRow(qPrintable(fact.part)) << fact.part;
            }
        }
    }

    void everyPartIsAsTold()
    {
        QFETCH(QString, part);
        QObject* object = partsOf(*m_bench).value(part);
        QVERIFY(object);
        const QVector<Fact> all = facts();
        for (const Fact& fact : all) {
            if (fact.part != part) {
                continue;
            }
            QVariant found = read(*object, fact.property);
            QVERIFY2(found.isValid(), qPrintable(fact.property));
            QVERIFY2(found.convert(fact.told.userType()), qPrintable(fact.property));
            if (found != fact.told) {
                qWarning() << "wrong:" << fact.property;
            }
            QCOMPARE(found, fact.told);
        }
    }

    void theRowsHoldTheirPartsInOrder()
    {
        const QMap<QString, QObject*> parts = partsOf(*m_bench);
        const auto content = [&parts](const QWidget& p_widget) {
            return contentOf(parts, *qobject_cast<QBoxLayout*>(p_widget.layout()));
        };
        QCOMPARE(content(*m_bench->window.centralWidget()), QStringLiteral("bar, splitter"));
        QCOMPARE(content(m_bench->bar()),
                 QStringLiteral("file button, zoom in button, zoom reset button, zoom out button, "
                                "download button, name label, name field, stretch 100, info area, "
                                "recent button, code button, more button"));
        QCOMPARE(content(m_bench->palette()), QStringLiteral("colour bar, strip"));
        const auto inSplitter = [&parts](const QString& p_name) {
            const auto& splitter = as<QSplitter>(*parts.value(p_name));
            QStringList names;
            for (int i = 0; i < splitter.count(); ++i) {
                names << parts.key(splitter.widget(i));
            }
            return names.join(QStringLiteral(", "));
        };
        QCOMPARE(inSplitter(QStringLiteral("splitter")), QStringLiteral("upper splitter, palette"));
        QCOMPARE(inSplitter(QStringLiteral("upper splitter")), QStringLiteral("canvas, code pane"));
        QVERIFY(!m_bench->window.findChild<QStatusBar*>());
        for (const QPointer<tzlabel>& tab : m_bench->palette().folders()) {
            QCOMPARE(tab->parentWidget(), m_bench->window.centralWidget());
        }
    }

    void aNoticeHoldsItsTextAndItsButtonInABoxWithoutMargins()
    {
        const QMap<QString, QObject*> parts = partsOf(*m_bench);
        const QLayout& notice = *widget(*parts.value(QStringLiteral("notice"))).layout();
        QCOMPARE(notice.count(), 2);
        QCOMPARE(notice.itemAt(0)->widget(), parts.value(QStringLiteral("notice text")));
        const QLayout* box = notice.itemAt(1)->layout();
        QVERIFY(box);
        QCOMPARE(describe(box->contentsMargins()), QStringLiteral("0 0 0 0"));
        QCOMPARE(box->itemAt(0)->widget(), parts.value(QStringLiteral("notice button")));
    }

    void theBarIsOfTheCategorysColour_data()
    {
        columns<int, QString, QString>("tab", "colour", "picture");
        row("Action", 0, "#f94141", ":/dongzuo-pre.png");
        row("Sound", 1, "#6743fa", ":/shengyin-pre.png");
        row("Expression", 2, "#0594ff", ":/biaoqing-pre.png");
        row("Control", 3, "#f8b824", ":/kongzhi-pre.png");
    }

    void theBarIsOfTheCategorysColour()
    {
        QFETCH(int, tab);
        QFETCH(QString, colour);
        QFETCH(QString, picture);
        const QMap<QString, QObject*> parts = partsOf(*m_bench);
        m_bench->click(*m_bench->palette().folders().at(tab));
        QCOMPARE(widget(*parts.value(QStringLiteral("colour bar"))).styleSheet(),
                 QStringLiteral("background-color:") + colour);
        QCOMPARE(m_bench->palette().folders().at(tab)->imagePath(), picture);
        // A strip of blocks fills the area but for the room of its bar.
        const auto& strip = as<QScrollArea>(*parts.value(QStringLiteral("strip")));
        QCOMPARE(strip.widget()->height(), strip.height() - 16);
        const QList<QLabel*> blocks = strip.widget()->findChildren<QLabel*>();
        QVERIFY(!blocks.isEmpty());
        for (const QLabel* block : blocks) {
            QCOMPARE(block->height(), int(0.6 * (strip.height() - 16)));
            QVERIFY(block->testAttribute(Qt::WA_DeleteOnClose));
        }
        QCOMPARE(colourAt(m_bench->palette(), QPoint(1270, 12)), colour);
    }

    void thePalettesGroundTellsAChooserFromBlocks()
    {
        // Between the strip's end and the bar.
        const QPoint ground(1270, 40);
        m_bench->click(*m_bench->palette().folders().at(1));
        QCOMPARE(colourAt(m_bench->palette(), ground), QStringLiteral("#043c66"));
        m_bench->clickAt(m_bench->add(804), QPointF(60, 120));
        QCOMPARE(colourAt(m_bench->palette(), ground), QStringLiteral("#ebf6ff"));
        // The keys stay with the block's field.
        QCOMPARE(m_bench->chooser().size(), 2);
        QCOMPARE(m_bench->chooser().first()->focusPolicy(), Qt::NoFocus);
    }

    // Unlike at later sizes, where the whole picture is seen: that is meant.
    void atFirstTheBackgroundFillsTheWholeCanvas()
    {
        m_bench.reset();
        MainWindow window;
        const TzProgramView& canvas = *window.view();
        const QSize texture = canvas.palette().brush(canvas.backgroundRole()).texture().size();
        // The frame that the style sheet takes away was there still.
        const QSize seen = canvas.viewport()->size() - QSize(2, 2);
        QVERIFY(texture.width() >= seen.width() && texture.height() >= seen.height());
    }

    void aWindowThatGrowsGivesTheRoomToTheCanvas()
    {
        TzProgramView& canvas = m_bench->canvas();
        QTextBrowser& pane = *m_bench->window.codeBrowser();
        m_bench->bar().OnShowCode();
        QCoreApplication::processEvents();
        QCOMPARE(pane.width(), 400);
        const QSize before = canvas.size();
        m_bench->window.resize(1480, 868);
        QCoreApplication::processEvents();
        QCOMPARE(canvas.size(), before + QSize(200, 100));
        QCOMPARE(m_bench->palette().height(), 236);
        QCOMPARE(pane.width(), 400);
    }

    void aWindowThatGrowsLeavesThePaletteAsTheUserMadeIt()
    {
        auto& splitter = as<QSplitter>(*partsOf(*m_bench).value(QStringLiteral("splitter")));
        splitter.setSizes({splitter.height() - 150, 150});
        QCOMPARE(m_bench->palette().height(), 150);
        m_bench->window.resize(1280, 868);
        QCoreApplication::processEvents();
        QCOMPARE(m_bench->palette().height(), 150);
    }

    void thePaletteKeepsWithinItsLimits()
    {
        auto& splitter = as<QSplitter>(*partsOf(*m_bench).value(QStringLiteral("splitter")));
        splitter.setSizes({0, 10000});
        QCOMPARE(m_bench->palette().height(), 236);
        splitter.setSizes({10000, 0});
        QCOMPARE(m_bench->palette().height(), 100);
    }

    void theWheelsStripStandsForASecond()
    {
        const QMap<QString, QObject*> parts = partsOf(*m_bench);
        const QSize size = m_bench->canvas().viewport()->size();
        const QPoint at(100, size.height() - 50);
        QWheelEvent event(at, m_bench->canvas().viewport()->mapToGlobal(at), QPoint(),
                          QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_bench->canvas().viewport(), &event);
        const QWidget& strip = widget(*parts.value(QStringLiteral("wheel strip")));
        QVERIFY(strip.isVisible());
        QCOMPARE(strip.geometry(), QRect(0, size.height() - 100, size.width() - 100, 100));
        const auto& timer = as<QTimer>(*parts.value(QStringLiteral("wheel timer")));
        QVERIFY(timer.isActive());
        QCOMPARE(timer.interval(), 1000);
        QTRY_VERIFY(!strip.isVisible());
    }

    void theCanvasHasUndoAndRedoAndTheMenuHasNot()
    {
        QStringList texts;
        const QList<QAction*> actions = m_bench->canvas().actions();
        for (const QAction* action : actions) {
            QVERIFY(
                !m_bench->canvas().contextMenu().actions().contains(const_cast<QAction*>(action)));
            texts << action->text().trimmed();
        }
        QCOMPARE(texts.size(), 2);
        QVERIFY(!actions.first()->isEnabled());
        m_bench->add(103);
        m_bench->clickAt(m_bench->hands.main()->next(), QPointF(30, 30));
        m_bench->hands.key(Qt::Key_Delete);
        QVERIFY(actions.first()->isEnabled());
        actions.first()->trigger();
        QCOMPARE(m_bench->program(), (QList<int>{0, 103}));
        actions.last()->trigger();
        QCOMPARE(m_bench->program(), QList<int>{0});
    }

    void theLogoLiesInTheMiddleBelowAllBlocks()
    {
        const QGraphicsItem* logo = nullptr;
        const QList<QGraphicsItem*> items = m_bench->canvas().scene()->items();
        for (const QGraphicsItem* item : items) {
            if (item->type() == QGraphicsPixmapItem::Type && !item->parentItem()) {
                logo = item;
            }
        }
        QVERIFY(logo);
        QCOMPARE(logo->zValue(), -10.0);
        const QPoint middle = m_bench->canvas().viewport()->rect().center();
        const QPointF way =
            m_bench->canvas().mapFromScene(logo->sceneBoundingRect().center()) - QPointF(middle);
        QVERIFY(way.manhattanLength() <= 2);
    }

private:
    static QString colourAt(QWidget& p_widget, const QPoint& p_at)
    {
        QWidget& window = *p_widget.window();
        return window.grab().toImage().pixelColor(p_widget.mapTo(&window, p_at)).name();
    }
};

QTEST_MAIN(LooksTest)
#include "lookstest.moc"
