#pragma once

#include <QString>
#include <QUndoCommand>
#include <QVector>

class Document;

namespace moduleUndoCommand
{
/** Puts the chains of a clipboard text on the canvas, their heads at one place, all loose. */
class pasteCommand : public QUndoCommand
{
public:
    pasteCommand(Document& p_document, const QString& p_text, int p_x, int p_y);

    void redo() override;
    void undo() override;

private:
    Document& m_document;
    QString m_text;
    int m_x;
    int m_y;
    /** The keys of each pasted chain, its head's first. */
    QVector<QVector<int>> m_keys;
};
} // namespace moduleUndoCommand
