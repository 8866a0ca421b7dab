#pragma once

#include "modules/buttonspec.h"
#include "modules/supermodule.h"
#include "proj/controls/selectablebutton.h"

#include <QColor>

#include <functional>

/** The keys of a field for seconds. */
constexpr uint32_t TimeKeys = KeyboardDigits | KeyboardPoint | KeyboardDelete;

/**
 * Base of the catalogue: makes the buttons of parameters and paints what several families
 * paint alike.
 */
class parameterModule : public supermodule
{
public:
    using supermodule::supermodule;

    /** From the table of choosers. */
    const Chooser* popUpChooser(int p_mode) const override;

protected:
    /** Adds a button to the block; a press runs p_press. */
    void addChooser(const ButtonLook& p_look, const QRect& p_geometry,
                    std::function<void()> p_press, const QString& p_text = QString());
    /**
     * Adds a number field as the block's first button, which opens the keyboard with its own keys.
     * What is typed in it on the computer's keyboard comes to takeNumber(). p_toolTip is a literal.
     */
    void addNumberField(const ButtonLook& p_look, const QRect& p_geometry, uint32_t p_keys,
                        const QString& p_text, const char* p_toolTip = nullptr);
    /** The same for a block whose one button it is. */
    void addOnlyNumberField(int p_width, uint32_t p_keys, const QString& p_text);
    /** The widget of the number field, until control is back in the event loop. */
    SelectableButton& numberField();
    /** Edits the number field by a key of the palette's keyboard, which comes to takeNumber(). */
    void typeInField(int p_key);
    /** Called when the text of the number field has changed. */
    virtual void takeNumber(const QString&) {}
    /**
     * Marks the document as modified and updates the block. Meant: nothing is pushed on the undo
     * stack; parameter changes aren't undoable in this design.
     */
    void parameterChanged();
    /** A whole number out of a file: as it stands there, 0 for what is none. */
    static int numberIn(const QDomElement& p_element, const char* p_name);
    /** An element with a port alone, for the blocks whose paramsElement() is that. */
    static QDomElement portAlone(int p_port);

    /** Draws a picture at a place in block coordinates. */
    static void drawPicture(QPainter* p_painter, const char* p_path, int p_x = 0, int p_y = 0);
    /** Draws the block's body, its corners filled where a neighbour is linked. */
    void drawBody(QPainter* p_painter, const char* p_path) const;
    /** Draws the block's body and a picture on it. */
    void drawOn(QPainter* p_painter, const char* p_body, const char* p_overlay) const;
    /** Draws the body of a motion block, its pictogram and, if it is timed, the small clock. */
    void drawMotion(QPainter* p_painter, const char* p_overlay, bool p_timed = false) const;
    /** Draws a choice in the middle of the block's body; a null picture draws nothing. */
    void drawCentred(QPainter* p_painter, const QPixmap& p_picture) const;
};

/** A block whose one parameter is a choice by number. */
class choiceModule : public parameterModule
{
public:
    using parameterModule::parameterModule;

    void loadXml(const QDomElement& p_element) override;

protected:
    choiceModule(const choiceModule& p_other) = default;
    void writeAttributes(QDomElement& p_element) const override;
    void choose(int p_choice);

    static constexpr int s_firstChoice = 1;
    /** The choice; not range-checked on load. */
    int n = s_firstChoice;
};
