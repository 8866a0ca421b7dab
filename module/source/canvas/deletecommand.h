#pragma once

#include "canvas/moduleplace.h"

#include <QDomDocument>
#include <QUndoCommand>
#include <QVector>

class supermodule;
class TzProgramView;

namespace moduleUndoCommand
{
/**
 * Deletes a block with all that hangs under it at that moment. Undo builds it anew from what was
 * written down and puts it where it was: loose if it was loose, else linked to its former parent,
 * or to what it touches if that has gone or is taken.
 */
class deleteCommand : public QUndoCommand
{
public:
    /** p_place: the one that the block comes back to. */
    deleteCommand(TzProgramView* p_view, supermodule* p_module, const ModulePlace& p_place);

    void redo() override;
    void undo() override;

private:
    bool hangAgain(supermodule* p_module) const;

    TzProgramView* m_view;
    int m_key;
    /** Of the block and of all under it: other commands know them by these. */
    QVector<int> m_keys;
    ModulePlace m_place;
    QDomDocument m_document;
};
} // namespace moduleUndoCommand
