#pragma once

class supermodule;

/** What Document::changed() carries. */
struct DocumentChange {
    enum Kind {
        /**
         * Blocks or links are about to change or to be saved. Receivers remove items that aren't
         * part of the program, such as the preview, and end their drags.
         */
        Preparing,
        /** A block and all under it are about to be deleted. */
        Removing,
        /** The text of the program may be another one. */
        Content,
        /** Another program slot, or another program, is shown. */
        SlotShown,
        /** The list of recent projects has changed. */
        RecentFiles
    };

    Kind kind;
    /** The block that Removing is about; else null. */
    supermodule* module = nullptr;
};
