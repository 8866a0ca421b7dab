#pragma once

#include "programoutline.h"
#include "shell/mainwindow.h"

#include <QEvent>
#include <QPoint>
#include <QSet>
#include <QStringList>

#include <functional>
#include <random>

class QPushButton;

/**
 * A program of blocks put together at random in a real window, as a user does it: blocks are
 * dropped at connectors, their values set by their buttons, by pop-up, palette or keyboard. The
 * same seed gives the same program.
 *
 * The checks return what is wrong as readable lines, nothing when all is well. They leave the
 * program as they found it, where they don't say otherwise.
 */
class RandomProgram
{
public:
    /** p_folder is where projects are saved to. */
    RandomProgram(quint32 p_seed, const QString& p_folder);
    ~RandomProgram();
    Q_DISABLE_COPY(RandomProgram)

    /** Drops the blocks and sees after each that it hangs where it was put, and all others still.
     */
    QStringList build();
    /** Saves, opens and saves again, twice; see there for what must be the same. */
    QStringList brokenTrip();
    /**
     * Shows the code pane and sees for each block that hovering it lights its own text there, and
     * that a press on that text points at it again.
     */
    QStringList brokenCodePane();
    /** Copies some chain and pastes it three times, the last time from its own copy. */
    QStringList brokenCopy();
    /** Adds, pastes and deletes at random, goes back to the start and forth to the end, twice. */
    QStringList brokenHistory();
    /** The same in a new document; the program is gone after that. */
    QStringList brokenHistoryFromNothing();

    /** The chains with their values, a line each. */
    QString description() const;
    QString text() const;
    /** The project as the trip has saved it, without the action data. */
    QByteArray project() const { return m_project; }
    /** Types that were dropped. */
    QSet<int> types() const { return m_types; }
    int deepest() const { return m_deepest; }
    /** How often things were done, by a name for each. */
    const QMap<QString, int>& tally() const { return m_tally; }

private:
    struct Place {
        const supermodule* owner;
        LinkType link;
    };
    struct State {
        QStringList outline;
        QString text;
    };

    // Building.
    int nextType();
    QList<supermodule*> blocks() const;
    QVector<Place> placesFor(int p_type);
    bool standsAlone(const Place& p_place) const;
    QPointF emptyPlace(const QSizeF& p_size);
    QStringList putBlock();
    supermodule* drop(int p_type, const std::function<QPoint()>& p_target);
    void setParameter(supermodule* p_block);
    // These return what was done, for the tally.
    QString answerPopUp();
    QString answerPalette();
    QString typeNumber(const QList<QPushButton*>& p_keys);
    QString someNumber();

    // Editing.
    /** Some block, but the main block only if there is no other. */
    supermodule* someBlock();
    supermodule* click(const supermodule* p_block);
    void copy(const supermodule* p_block);
    supermodule* pasteSomewhere();
    void addThroughScene();
    void pasteCopy();
    void deleteByKey();
    void throwAway();
    QString doSomething(bool p_adds);
    QStringList history(int p_steps, bool p_adds);
    State state() const;
    QStringList unlike(const State& p_expected, const QString& p_when) const;

    // Hands.
    int below(int p_limit);
    void showPoint(const QPointF& p_scenePos);
    /** The viewport's point of a scene point. */
    QPoint at(const QPointF& p_scenePos) const;
    QPoint somePoint();
    void mouse(QEvent::Type p_type, const QPoint& p_at);
    void hover(const QPoint& p_at);
    void key(int p_key, Qt::KeyboardModifiers p_modifiers = Qt::NoModifier);
    QStringList save();

    std::mt19937 m_chance;
    QString m_folder;
    MainWindow m_window;
    TzProgramView& m_view;
    ProgramModel m_model;
    QVector<int> m_deck;
    QSet<int> m_types;
    QByteArray m_project;
    /** Of three programs one goes deep. */
    bool m_goesDeep;
    int m_deepest = 0;
    QMap<QString, int> m_tally;
};
