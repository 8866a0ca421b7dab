#pragma once

#include "document/moduleplace.h"
#include "document/takentree.h"

#include <QUndoCommand>

#include <optional>

class Document;
class supermodule;

namespace moduleUndoCommand
{
/**
 * Deletes a block with all that hangs under it at that moment. Undo builds it anew and puts it
 * where it was, see TakenTree::putBack().
 */
class deleteCommand : public QUndoCommand
{
public:
    /** p_place: the one that the block comes back to from the first deletion. */
    deleteCommand(Document& p_document, supermodule* p_module, const ModulePlace& p_place);

    void redo() override;
    void undo() override;

private:
    Document& m_document;
    int m_key;
    /** Until the first deletion. */
    std::optional<ModulePlace> m_place;
    TakenTree m_taken;
};
} // namespace moduleUndoCommand
