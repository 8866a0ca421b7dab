#pragma once

#include <QString>
#include <QStringList>

#include <initializer_list>

/** What the buttons of a chooser show. */
struct ChooserEntries {
    enum Kind { Words, Pictures /**< resource paths */ };

    Kind kind;
    /** One for each button, or a single one with %1 for its number. */
    std::initializer_list<const char*> texts;
    int first = 0;  /**< number of the first button of a numbered chooser */
    int count = 0;  /**< its buttons; 0 for a chooser without numbers */
    int digits = 0; /**< the least of each number */
};

/** How a chooser's buttons look: a style sheet of two rules. */
struct ChooserStyle {
    const char* normalPicture;
    const char* pressedPicture;
    int gap;           /**< blanks between the rules */
    const char* extra; /**< what both rules end in */
};

/** Where the buttons of the pop-up stand, each 60 by 60, and what they give the block. */
struct PopUpForm {
    const char* background; /**< resource path; the pop-up is as large as this picture */
    int iconSide;           /**< of the pictures on the buttons */
    int columns;
    int advance;     /**< from one column to the next */
    int top;         /**< y of the first row */
    int rowStep;     /**< from one row to the next */
    int columnSlope; /**< how much lower each button stands than the one before */
    int firstResult; /**< what the block gets for the first button: 0 or ConditionOffset */
};

/** Added to the choice of a condition, so that it differs from any choice of a port. */
constexpr int ConditionOffset = 5;

/** One of the ways in which a block gets a value: what the pop-up or the palette shows for it. */
struct Chooser {
    ChooserEntries entries;
    ChooserStyle style;
    /** Null for a chooser of the palette. */
    const PopUpForm* popUp = nullptr;
    /** The palette returns the value with the id of the parameter that it was asked for. */
    bool byParameter = false;

    int count() const;
    /**
     * The text or the resource path at a place, from 0. Outside of the chooser, a numbered one
     * goes on as it is numbered, which names no picture; any other gives an empty text.
     */
    QString entry(qint64 p_place) const;
    QStringList allEntries() const;
    QString styleSheet() const;
};
