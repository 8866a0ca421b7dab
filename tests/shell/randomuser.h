#pragma once

#include "shell/mainwindow.h"

#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QStringList>

#include <random>

class QDialog;
class QFileDialog;
class QMenu;

/**
 * A user who does one thing after another at random on a real window, by mouse, keys and drops.
 * The same seed gives the same actions. Dialogs that come up are answered.
 */
class RandomUser : public QObject
{
    Q_OBJECT

public:
    /** p_folder is where projects are saved to. */
    RandomUser(quint32 p_seed, const QString& p_folder);

    /** Sets the application up for such users: once, before the first. */
    static void prepareApplication();
    /** A row of test data for each seed. */
    static void addSeeds(int p_first, int p_runs);

    /** Does one thing, and lets the program do what it then has to. */
    void act();
    /** What is wrong now, as readable lines; empty when all is well. */
    QStringList broken();
    /**
     * Lets go of everything, saves, and sees that the file opens; with p_reopen opens it in the
     * window and sees that nothing has changed. The same lines.
     */
    QStringList brokenRoundTrip(bool p_reopen);
    /**
     * Undoes and does again, and the other way round, where that is possible just now: one step, or
     * p_all the way to the end and back. The document must be what it was. The same lines.
     */
    QStringList brokenPairs(bool p_all);
    /** How many such pairs there were. */
    int pairs() const { return m_pairs; }
    /** What is wrong and what was done so far, to be told when the test fails. */
    QString report(const QStringList& p_broken) const;

protected:
    void timerEvent(QTimerEvent* p_event) override;

private:
    struct Action;
    static const QVector<Action>& actionsOf(int p_situation);

    // What can be done.
    void dropFromPalette();
    void dragBlock();
    void beginDrag();
    void dragOn();
    void release();
    void loseRelease();
    void meetDialog();
    void dragFarOut();
    void clickBlock();
    void clickButtonOnBlock();
    void clickGround();
    void doubleClick();
    void choose();
    void pressOnPopUp();
    void clickTab();
    void pressKey();
    void typeNumber();
    void undoOrRedo();
    void copyOrPaste();
    void openContextMenu();
    void answerMenu();
    void clickToolButton();
    void typeName();
    void turnWheel();
    void resizeWindow();
    void switchSlot();
    void deleteSlot();
    void showCode();
    void dropProject();
    void saveByKey();
    void takeClipboard();
    void closeWindow();
    void startAnew();

    // Hands.
    int below(int p_limit);
    void note(const QString& p_what);
    QList<supermodule*> blocks() const;
    /** A block that can be reached by the mouse, and a point on it; null if there is none. */
    supermodule* someBlock(QPoint* p_point);
    QPoint somePoint();
    /** Where to let a block go: at a connector more often than not. */
    QPoint someTarget();
    void mouse(QEvent::Type p_type, const QPoint& p_at, Qt::MouseButton p_button);
    void drag(const QPoint& p_from, const QPoint& p_to);
    /** A move with no button down, as it comes after a release that went elsewhere. */
    void moveFreely();
    /** What is out of reach, or stuck, with no button down. */
    QStringList stuck() const;
    QString chainsNow() const;
    /** Text, values, links, places and keys of all that is there. */
    QString documentNow() const;

    // Answers.
    void answer();
    void answerMenu(QMenu& p_menu);
    void answerFiles(QFileDialog& p_dialog);

    std::mt19937 m_chance;
    QString m_folder;
    QStringList m_actions;
    MainWindow m_window;
    TzProgramView& m_view;
    QPoint m_mouse;
    /** The left button is down on the canvas. */
    bool m_held = false;
    bool m_answering = false;
    /** What the document held when it was last found unmodified; empty when it was modified. */
    QString m_unmodified;
    /** The document was replaced or saved in the last action. */
    bool m_replaced = false;
    int m_pairs = 0;
};
