#pragma once

#include "document/moduleplace.h"
#include "document/treerecord.h"

#include <QUndoCommand>

class Document;
class supermodule;

namespace moduleUndoCommand
{
/**
 * Deletes a block with all that hangs under it at that moment. Undo builds it anew from its record
 * and puts it where it was: loose if it was loose, else linked to its former parent, or to what it
 * touches if that has gone or is taken.
 */
class deleteCommand : public QUndoCommand
{
public:
    /** p_place: the one that the block comes back to. */
    deleteCommand(Document& p_document, supermodule* p_module, const ModulePlace& p_place);

    void redo() override;
    void undo() override;

private:
    bool hangAgain(supermodule* p_module) const;

    Document& m_document;
    int m_key;
    ModulePlace m_place;
    TreeRecord m_record;
    bool m_done = false;
};
} // namespace moduleUndoCommand
