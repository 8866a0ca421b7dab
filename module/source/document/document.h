#pragma once

#include "actions/model/actionimage.h"
#include "document/documentchange.h"
#include "document/modulesid.h"
#include "document/tzprogramscene.h"

#include <QObject>
#include <QUndoStack>

class mainModule;
class ProgramNameHolder;
class QDomElement;
class supermodule;
struct ModulePlace;

/**
 * The document: what a program is. Owns the scene with its blocks, the main block, which lives as
 * long as the document, the undo stack and the action image; opens and saves itself. There is one
 * at a time, since the lists of roots and the key registry are process-wide. Interface thread only.
 */
class Document : public QObject
{
    Q_OBJECT

public:
    explicit Document(QObject* p_parent = nullptr);
    ~Document() override;
    Q_DISABLE_COPY(Document)

    tzprogramscene& scene() { return m_scene; }
    mainModule* mainBlock() const { return m_mainModule; }
    /** Puts the main block at a scene point, where a new program has it again. */
    void setFirstPlace(const QPointF& p_place);
    QUndoStack& undoStack() { return m_undoStack; }

    /** True when the document differs from its file: the process-wide documentModified. */
    bool isModified() const;
    void setModified(bool p_modified);

    /** Where the program's name of a project file stands; null: files carry none. Not owned. */
    void setProgramNameHolder(ProgramNameHolder* p_holder) { m_nameHolder = p_holder; }

    /** The robot actions. From the first call on a new project resets them. */
    ActionImage& actions();

    // Files.
    /**
     * Saves the project with its actions, and puts it first in the recent list. Nothing is modified
     * then. False if it couldn't be written; the old file is then as writeProject() leaves it.
     */
    bool save(const QString& p_path);
    /** Writes the project with p_tail in place of the actions; what is modified stays so. */
    bool save(const QString& p_path, const QByteArray& p_tail);
    /** The save of temp.tlrx: blocks without parent alone, and no entry in the recent list. */
    bool saveTemporary(const QString& p_path, const QByteArray& p_tail);
    /** Opens a project: a ProjectResult. With any result but 0 the document is what it was. */
    int open(const QString& p_path);
    /** Takes a path out of the recent list. */
    void forgetRecentFile(const QString& p_path);
    /**
     * Begins a project without blocks and actions, with nothing to undo and nothing modified, and
     * shows the main block in its first place.
     */
    void startAnew();
    /** Deletes all blocks but the main block, and what follows that. */
    void newProgram();
    /** Forgets undo history, keys and roots; the main block is the one root again. */
    void reset();

    // Blocks, through the undo stack.
    /** Adds a block of a type, its top edge's middle at a scene point. */
    void addModule(int p_x, int p_y, int p_id);
    /**
     * Deletes a block with all under it; null and the main block are ignored. p_place is where an
     * undo puts it.
     */
    void deleteModule(supermodule* p_module, const ModulePlace& p_place);
    /**
     * Puts the chains of a clipboard text at a scene point, loose. A text without known blocks
     * leaves the undo history as it is.
     */
    void paste(const QString& p_text, int p_x, int p_y);

    // What commands are made of.
    /** Deletes a block and all under it, for good; null is ignored. */
    void removeModule(supermodule* p_module);
    /** Notifies that the text of the program may have changed. */
    void noteContent() { emit changed({DocumentChange::Content}); }
    /** Notifies that blocks or links are about to change. */
    void prepareChange() { emit changed({DocumentChange::Preparing}); }

    // Clipboard.
    /** A chain from a block on in the clipboard's form; null gives a form without blocks. */
    static QString clipboardText(const supermodule* p_first);

    // Program slots.
    /** Shows the blocks of a slot and hides all others. */
    void showSlot(modulesId p_id);
    /** Deletes the sub-program that is shown, if any, and shows the main program. */
    void deleteSubProgram();
    /** Stores a sub-program's name, also as the caption of its blocks; unknown ids are ignored. */
    void setSubProgramName(int p_id, const QString& p_name);

signals:
    /** The one notice of change. */
    void changed(const DocumentChange& p_change);

private:
    void takeIn(const QDomElement& p_project);

    tzprogramscene m_scene;
    mainModule* m_mainModule;
    QPointF m_firstPlace;
    QUndoStack m_undoStack;
    ActionImage m_actions;
    /** True once the image was asked for: only then does a new project reset it. */
    bool m_actionsNeeded = false;
    ProgramNameHolder* m_nameHolder = nullptr;
};
