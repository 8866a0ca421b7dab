#pragma once

#include "selectablebutton.h"
#include "supermodule.h"

#include <QColor>

#include <functional>

class QPushButton;

/** How a button on a block looks. */
struct ButtonLook {
    const char* normalPicture;
    const char* pressedPicture;
    bool arrow;     /**< shows the down arrow */
    bool whiteText; /**< its text is white */
    int gap = 29;   /**< blanks between the two rules of its style sheet */
    const char* property = "border-image";
};

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

protected:
    /** Puts a button on the block; a press runs p_press. */
    QPushButton* addChooser(const ButtonLook& p_look, const QRect& p_geometry,
                            std::function<void()> p_press);
    /**
     * Puts a number field on the block that opens the keyboard with its own keys. p_typed runs
     * when a key of the computer's keyboard has changed the field.
     */
    SelectableButton* addNumberField(const ButtonLook& p_look, const QRect& p_geometry,
                                     uint32_t p_keys, std::function<void()> p_typed);
    /** Edits the number field at p_index by one key and returns its text. */
    QString editField(int p_index, int p_key);
    /** Shows a text on the button at p_index, if the buttons are there. */
    void showOnButton(int p_index, const QString& p_text);
    /** Marks the document as changed and the block as to be painted. */
    void parameterChanged();

    /** Draws a picture at a place in block coordinates. */
    static void drawPicture(QPainter* p_painter, const char* p_path, int p_x = 0, int p_y = 0);
    /** Draws a choice in the middle of the block's body; a null picture draws nothing. */
    void drawCentred(QPainter* p_painter, const QPixmap& p_picture) const;
};
