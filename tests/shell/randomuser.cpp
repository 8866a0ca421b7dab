#include "randomuser.h"

#include "base/recentfiles.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "proj/binoverlay.h"
#include "project/projectdocument.h"
#include "project/projectfile.h"
#include "support/canvas/documentinvariants.h"
#include "support/canvas/documentpicture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDomDocument>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimerEvent>
#include <QUndoStack>

#include <algorithm>

namespace
{
/** Copies of copies would grow without end. */
const int s_mostBlocks = 120;

enum Situation : int { Free, Holding, InMenu };
} // namespace

struct RandomUser::Action {
    int weight;
    void (RandomUser::*run)();
};

const QVector<RandomUser::Action>& RandomUser::actionsOf(int p_situation)
{
    static const QVector<Action> s_free = {
        {26, &RandomUser::dropFromPalette},
        {20, &RandomUser::dragBlock},
        {5, &RandomUser::beginDrag},
        {6, &RandomUser::clickBlock},
        {18, &RandomUser::clickButtonOnBlock},
        {3, &RandomUser::clickGround},
        {1, &RandomUser::doubleClick},
        {12, &RandomUser::choose},
        {8, &RandomUser::pressOnPopUp},
        {2, &RandomUser::clickTab},
        {8, &RandomUser::pressKey},
        {4, &RandomUser::typeNumber},
        {14, &RandomUser::undoOrRedo},
        {12, &RandomUser::copyOrPaste},
        {6, &RandomUser::openContextMenu},
        {6, &RandomUser::clickToolButton},
        {1, &RandomUser::typeName},
        {3, &RandomUser::turnWheel},
        {2, &RandomUser::resizeWindow},
        {3, &RandomUser::switchSlot},
        {1, &RandomUser::deleteSlot},
        {2, &RandomUser::showCode},
        {2, &RandomUser::dropProject},
        {1, &RandomUser::saveByKey},
        {1, &RandomUser::takeClipboard},
        {1, &RandomUser::closeWindow},
    };
    // With the button down, only the canvas hears the mouse; keys and wheel are still there.
    static const QVector<Action> s_holding = {
        {10, &RandomUser::dragOn},         {8, &RandomUser::release},
        {2, &RandomUser::pressKey},        {3, &RandomUser::undoOrRedo},
        {3, &RandomUser::copyOrPaste},     {1, &RandomUser::turnWheel},
        {2, &RandomUser::openContextMenu}, {2, &RandomUser::loseRelease},
        {2, &RandomUser::meetDialog},      {1, &RandomUser::dragFarOut},
    };
    static const QVector<Action> s_inMenu = {{1, &RandomUser::answerMenu}};
    return p_situation == Free ? s_free : p_situation == Holding ? s_holding : s_inMenu;
}

void RandomUser::prepareApplication()
{
    // The dialogs of Qt itself: those of a desktop can't be answered from here.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setQuitOnLastWindowClosed(false);
    qSetGlobalQHashSeed(0);
}

void RandomUser::addSeeds(int p_first, int p_runs)
{
    QTest::addColumn<int>("seed");
    for (int seed = p_first; seed < p_first + p_runs; ++seed) {
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
    }
}

QString RandomUser::report(const QStringList& p_broken) const
{
    return QStringLiteral("%1\nAfter:\n%2")
        .arg(p_broken.join(QLatin1Char('\n')), m_actions.join(QLatin1Char('\n')));
}

RandomUser::RandomUser(quint32 p_seed, const QString& p_folder)
    : m_chance(p_seed), m_folder(p_folder), m_view(*m_window.view())
{
    recentFiles.clear();
    QGuiApplication::clipboard()->clear();
    m_window.resize(1000, 700);
    m_window.show();
    QApplication::processEvents();
    documentModified = false;
}

int RandomUser::below(int p_limit)
{
    return static_cast<int>(m_chance() % static_cast<quint32>(qMax(1, p_limit)));
}

void RandomUser::note(const QString& p_what)
{
    m_actions.append(p_what);
    if (qEnvironmentVariableIsSet("RANDOM_USER_TELL")) {
        fprintf(stderr, "%4d %s\n", m_actions.size(), qPrintable(p_what));
    }
}

void RandomUser::act()
{
    m_replaced = false;
    m_answering = true;
    startTimer(0);
    if (QApplication::activePopupWidget()) {
        answerMenu();
    } else if (!m_held && blocks().size() > s_mostBlocks) {
        startAnew();
    } else {
        const QVector<Action>& actions = actionsOf(m_held ? Holding : Free);
        int all = 0;
        for (const Action& action : actions) {
            all += action.weight;
        }
        int chance = below(all);
        const Action* action = actions.constBegin();
        for (; chance >= action->weight; ++action) {
            chance -= action->weight;
        }
        (this->*action->run)();
    }
    m_answering = false;
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QList<supermodule*> RandomUser::blocks() const
{
    QList<supermodule*> list = canvasBlocks(m_view);
    // The scene's own order may hang on addresses.
    std::sort(list.begin(), list.end(), [](const supermodule* p_a, const supermodule* p_b) {
        return p_a->registryKey() < p_b->registryKey();
    });
    return list;
}

QString RandomUser::chainsNow() const
{
    const StableAttributeOrder order;
    QStringList chains;
    const QList<supermodule*> all = blocks();
    for (const supermodule* block : all) {
        if (!block->parentModule()) {
            QDomDocument document;
            QDomElement root = document.createElement(QStringLiteral("chain"));
            document.appendChild(root);
            writeChain(root, document, block);
            chains.append(document.toString(1));
        }
    }
    chains.sort();
    return chains.join(QLatin1Char('\n'));
}

QString RandomUser::documentNow() const
{
    QString keys;
    const QList<supermodule*> all = blocks();
    for (const supermodule* block : all) {
        const supermodule* parent = block->parentModule();
        keys += QStringLiteral("%1 is %2 under %3\n")
                    .arg(block->registryKey())
                    .arg(block->id)
                    .arg(parent ? parent->registryKey() : 0);
    }
    return chainsNow() + keys + m_view.generateProjectCode(1);
}

QStringList RandomUser::brokenPairs(bool p_all)
{
    // A branch that its block has no connector for comes from a file alone, and the layout leaves
    // it wherever it is.
    const QList<supermodule*> all = blocks();
    const bool laidOut = std::all_of(all.begin(), all.end(), [](const supermodule* p_block) {
        return !p_block->right() && (!p_block->left() || p_block->hasConnector(LeftLink));
    });
    if (m_held || QApplication::activePopupWidget() || !laidOut) {
        return {};
    }
    QUndoStack& stack = m_view.undoStack();
    const int at = stack.index();
    for (const bool undoFirst : {true, false}) {
        const int end = undoFirst ? 0 : stack.count();
        const int there = p_all ? end : at + (undoFirst ? -1 : 1);
        if (at == end) {
            continue;
        }
        const QString before = documentNow();
        stack.setIndex(there);
        const QStringList lines = brokenInvariants(m_view);
        stack.setIndex(at);
        m_pairs += qAbs(at - there);
        if (documentNow() != before || !lines.isEmpty() || !brokenInvariants(m_view).isEmpty()) {
            return lines + brokenInvariants(m_view) +
                   QStringList{undoFirst ? QStringLiteral("undo and redo give")
                                         : QStringLiteral("redo and undo give"),
                               documentNow(), QStringLiteral("instead of"), before};
        }
    }
    return {};
}

QStringList RandomUser::stuck() const
{
    if (m_held || QApplication::activePopupWidget()) {
        return {};
    }
    QStringList lines;
    const auto* bin = m_window.findChild<BinOverlay*>();
    if (!bin || bin->isVisible()) {
        lines << QStringLiteral("the bin is still there");
    }
    if (QGuiApplication::overrideCursor()) {
        lines << QStringLiteral("the cursor is still another");
    }
    const QList<supermodule*> all = blocks();
    for (const supermodule* block : all) {
        if (block->isVisible() && !m_view.sceneRect().contains(block->sceneBoundingRect())) {
            lines << QStringLiteral("block %1 is out of reach").arg(block->registryKey());
        }
    }
    return lines;
}

QStringList RandomUser::broken()
{
    QStringList lines = brokenInvariants(m_view);
    if (!lines.isEmpty()) {
        return lines;
    }
    const QString text = m_view.generateProjectCode(1);
    if (!text.startsWith(QLatin1String("#include \"vantrel.h\"")) ||
        text.count(QLatin1Char('{')) != text.count(QLatin1Char('}'))) {
        lines << QStringLiteral("the generated text is out of order: ") + text;
    }
    if (m_view.zoomFactor() < 0.5 || m_view.zoomFactor() > 2.0) {
        lines << QStringLiteral("the zoom factor is %1").arg(m_view.zoomFactor());
    }
    lines += stuck();
    // What changes must be known as changed, or it is lost without a question.
    const QString chains = documentModified ? QString() : chainsNow();
    if (!documentModified && !m_unmodified.isEmpty() && !m_replaced && chains != m_unmodified) {
        lines << QStringLiteral("the document has changed and doesn't say so: ") + m_unmodified +
                     QStringLiteral("\nis now: ") + chains;
    }
    m_unmodified = chains;
    return lines;
}

QStringList RandomUser::brokenRoundTrip(bool p_reopen)
{
    if (QWidget* menu = QApplication::activePopupWidget()) {
        menu->close();
    }
    if (m_held) {
        release();
    }
    note(p_reopen ? QStringLiteral("save and open again") : QStringLiteral("save"));
    const QString path = QDir(m_folder).filePath(QStringLiteral("trip.tlrx"));
    const QByteArray tail(ProjectTailSize, '\0');
    const QString text = m_view.generateProjectCode(1);
    const int count = blocks().size();
    if (!m_view.saveFile(path, tail)) {
        return {QStringLiteral("the project can't be saved")};
    }
    const QByteArray first = readWhole(path);
    ProjectContent project;
    if (readProject(path, project) != ProjectOpened) {
        return {QStringLiteral("the saved project can't be read")};
    }
    if (project.document.elementsByTagName(QStringLiteral("module")).size() != count) {
        return {QStringLiteral("the saved project has other blocks")};
    }
    if (!p_reopen) {
        return {};
    }
    documentModified = false;
    m_window.openPath(path);
    QStringList lines = brokenInvariants(m_view);
    if (m_window.fileName() != path) {
        lines << QStringLiteral("the saved project doesn't open");
    }
    if (m_view.generateProjectCode(1) != text) {
        lines << QStringLiteral("the saved project gives another text: ") +
                     m_view.generateProjectCode(1) + QStringLiteral("\nwas: ") + text;
    }
    if (!m_view.saveFile(path, tail) || storedChains(readWhole(path)) != storedChains(first)) {
        lines << QStringLiteral("the saved project changes when it is saved again: ") +
                     QString::fromUtf8(readWhole(path).chopped(tail.size())) +
                     QStringLiteral("\nwas: ") + QString::fromUtf8(first.chopped(tail.size()));
    }
    m_unmodified = documentModified ? QString() : chainsNow();
    return lines;
}

// Dialogs run loops of their own, which nothing but an event can end.
void RandomUser::timerEvent(QTimerEvent* p_event)
{
    killTimer(p_event->timerId());
    if (m_answering) {
        // A new one before the answer, for the next dialog may come up in the middle of it, and a
        // timer doesn't tick while its event is on.
        startTimer(0);
        answer();
    }
}

void RandomUser::answer()
{
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
        answerMenu(*menu);
        return;
    }
    QWidget* dialog = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        const int button = below(box->buttons().size());
        note(QStringLiteral("  answer %1 to %2").arg(button).arg(box->text()));
        m_replaced = true;
        box->buttons().at(button)->click();
    } else if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
        answerFiles(*files);
    } else if (dialog) {
        dialog->close();
    }
}

void RandomUser::answerMenu(QMenu& p_menu)
{
    QList<QAction*> choices;
    const QList<QAction*> all = p_menu.actions();
    for (QAction* action : all) {
        // The last would end the program, the one before it wants a controller.
        if (action->isEnabled() && !action->isSeparator() &&
            action->text() != QStringLiteral("关闭") &&
            action->text() != QStringLiteral("固件升级")) {
            choices.append(action);
        }
    }
    if (choices.isEmpty() || below(5) == 0) {
        note(QStringLiteral("  leave the menu"));
        QTest::keyClick(&p_menu, Qt::Key_Escape);
        return;
    }
    QAction* choice = choices.at(below(choices.size()));
    note(QStringLiteral("  choose ") + choice->text());
    m_replaced = true;
    p_menu.setActiveAction(choice);
    QTest::keyClick(&p_menu, Qt::Key_Enter);
}

void RandomUser::answerFiles(QFileDialog& p_dialog)
{
    if (below(4) == 0) {
        note(QStringLiteral("  think better of it"));
        p_dialog.reject();
        return;
    }
    const QString name = below(2) == 0 ? QStringLiteral("one.tlrx") : QStringLiteral("two.tlrx");
    note(QStringLiteral("  file ") + name);
    m_replaced = true;
    p_dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
        ->setText(QDir(m_folder).filePath(name));
    static_cast<QDialog&>(p_dialog).accept();
    // A file that isn't there to be opened leaves the dialog up.
    if (p_dialog.isVisible() && p_dialog.acceptMode() == QFileDialog::AcceptOpen) {
        p_dialog.reject();
    }
}
