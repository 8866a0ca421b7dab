#pragma once

#include <QRect>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

class QPushButton;

/** How a button on a block looks. Its texts are literals: pictures are told apart by address. */
struct ButtonLook {
    const char* normalPicture;
    const char* pressedPicture;
    bool arrow;     /**< shows the down arrow */
    bool whiteText; /**< its text is white */
    int gap = 29;   /**< blanks between the two rules of its style sheet */
    const char* property = "border-image";
};

/** What a button on a block is: its picture is painted, and its widget made, from this alone. */
struct ButtonSpec {
    ButtonLook look;
    /** In block coordinates. */
    QRect geometry;
    QString text = QString();
    /** What a press does. */
    std::function<void()> press = nullptr;
    /** Keyboard option bits of a number field; 0 for a button that isn't one. */
    uint32_t keys = 0;
    /** Gets the text of a number field that was edited on the computer's keyboard. */
    std::function<void(const QString&)> typed = nullptr;
    /** A literal, or null. */
    const char* toolTip = nullptr;
};

/** The widget of a button, dressed and of its size, without anything that a press does. */
std::unique_ptr<QPushButton> makeButton(const ButtonSpec& p_spec);
