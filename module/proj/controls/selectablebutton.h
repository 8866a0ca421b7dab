#pragma once

#include "proj/controls/picturebutton.h"

#include <cstdint>

/** Which keys a number field takes: the bits of a keyboard option. */
enum KeyboardOption : uint32_t {
    KeyboardDigits = 1,
    KeyboardPoint = 2,
    KeyboardMinus = 4,
    KeyboardDelete = 8
};

/**
 * The number-entry button of a block. A press marks its whole text; the next key then replaces
 * the text, later keys edit it at its end. At most one button is marked at a time.
 * A text too long for the button is painted in smaller letters, and cut off where these don't help.
 */
class SelectableButton : public PictureButton
{
    Q_OBJECT

public:
    explicit SelectableButton(QWidget* p_parent = nullptr);
    ~SelectableButton() override;

    /** The one marked button, or null. */
    static SelectableButton* current();

    bool isSelected() const { return m_selected; }
    /** Marks the button, taking the mark from another one, or takes the mark away. */
    void setSelected(bool p_selected);
    /** Keyboard option bits of the keys to take; all of them at first. */
    void setKeyMask(uint32_t p_keyMask) { m_keyMask = p_keyMask; }
    /** True when the mask lets a Qt::Key code through; only digits, point, minus, Backspace can. */
    bool acceptsKey(int p_key) const;
    /** Edits the text by one key, whatever the mask says. Other keys, and those against the
     * rules, leave the text alone; the mark goes with any key. */
    void applyKey(int p_key);
    /** The text as it is painted: all of it, or its beginning where that can't be made to fit. */
    QString shownText() const;
    /** True when p_ch may be put behind p_text: at most two decimals, else at most six characters.
     */
    static bool canAppend(const QString& p_text, QChar p_ch);

signals:
    /** A key of the computer's keyboard was taken. */
    void keyTypedSignal(int p_key);

protected:
    void keyPressEvent(QKeyEvent* p_event) override;
    void paintEvent(QPaintEvent* p_event) override;

private slots:
    void onPressed();

private:
    bool m_selected = false;
    uint32_t m_keyMask = 0xffffffff;
};
