#pragma once

class supermodule;

/** What a document tells those who show it; see Document::changed(). */
struct DocumentChange {
    enum Kind {
        /**
         * Blocks or links are about to change, or to be written down. What stands among the blocks
         * without being part of the program leaves now, and a gesture that holds one lets go.
         */
        Preparing,
        /** A block and all under it are about to be deleted. */
        Removing,
        /** The text of the program may be another one. */
        Content,
        /** Another program slot, or another program, is in sight. */
        SlotShown,
        /** The list of recent projects has changed. */
        RecentFiles
    };

    Kind kind;
    /** The block that Removing is about; else null. */
    supermodule* module = nullptr;
};
