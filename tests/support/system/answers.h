#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariantList>

/** The places of the buttons in the question about unsaved changes. */
enum Button : int { Yes = 0, No = 1, Cancel = 2 };
/** Instead of a button's place: the box is closed by its title bar. */
const int Closed = -1;

/**
 * Answers the dialogs to come, one entry a dialog: a button's place, or a path for a file dialog,
 * an empty one to cancel it.
 */
class Answers : public QObject
{
public:
    explicit Answers(const QVariantList& p_answers);

    bool allUsed() const { return m_answers.isEmpty(); }
    /** What the dialogs of the latest object said, in order: title, or title and text. */
    static QStringList& said();

private:
    void answer();

    QVariantList m_answers;
    QTimer m_timer;
};
