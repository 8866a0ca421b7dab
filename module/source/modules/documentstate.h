#pragma once

#include <QList>
#include <QMap>
#include <QPointer>
#include <QVector>

class supermodule;

// Block types with a role of their own.
/** The type of a task's root. */
constexpr int TaskRootId = 401;
/** The types of the thirty sub-programs' roots, both ends included. */
constexpr int FirstSubProgramId = 404;
constexpr int LastSubProgramId = 433;

/** The key under which graphics items carry their name: "module", or the link of a connector. */
constexpr int ItemNameKey = 256;

// The process-wide state of the one document; keys and live blocks are kept by ModuleRegistry.
// Interface thread only.

/** The root of each program slot, in slot order; the first is the main program's. */
extern QList<supermodule*> rootModules;
/** The roots of the parallel tasks; the first is the main program's. */
extern QList<supermodule*> taskModules;
/** The key registry. Undo commands know blocks by their keys in it, never by pointer. */
extern QMap<int, supermodule*> moduleMap;
/** The next free key of the registry; 1 in a new document. */
extern int nextModuleKey;
/** The block that opened a panel last and gets the values that come back. */
extern QPointer<supermodule> focusModule;
/** The block of the last left press. */
extern QPointer<supermodule> pressedModule;
/** True when the document differs from its file. To be set by setDocumentModified() alone. */
extern bool documentModified;
void setDocumentModified(bool p_modified);
/** All blocks there are, in a scene or not, in no order of use. */
extern QVector<supermodule*> liveModules;

/** The first visible entry of rootModules, at or behind an index; null if there is none. */
supermodule* firstVisibleRoot(int p_from = 0);
