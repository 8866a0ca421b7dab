#include "proj/controls/selectablebutton.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace
{
SelectableButton* s_current = nullptr;
/** Room on either side of a text, for the edges of the field's picture. */
const int s_textMargin = 4;
/** The smallest digits that are legible at a scale of 1. */
const int s_smallestPixels = 9;

bool isDigit(int p_key) { return Qt::Key_0 <= p_key && p_key <= Qt::Key_9; }

/** A text and the font that it fits a width in. */
struct FittedText {
    QFont font;
    QString text;
};

/** Smaller letters for a text that is too long, and where these are too wide, its beginning. */
FittedText fitted(const QString& p_text, const QFont& p_font, int p_width)
{
    QFont font = p_font;
    const auto isTooWide = [&] { return QFontMetrics(font).horizontalAdvance(p_text) > p_width; };
    for (int pixels = QFontInfo(font).pixelSize(); pixels > s_smallestPixels && isTooWide();) {
        font.setPixelSize(--pixels);
    }
    // Asked once more: eliding is stricter by a fraction of a pixel.
    return {font,
            isTooWide() ? QFontMetrics(font).elidedText(p_text, Qt::ElideRight, p_width) : p_text};
}
} // namespace

SelectableButton::SelectableButton(QWidget* p_parent) : PictureButton(p_parent)
{
    // Its ground is white, whatever the palette's colours are.
    QPalette colours = palette();
    colours.setColor(QPalette::ButtonText, Qt::black);
    setPalette(colours);
    connect(this, &QPushButton::pressed, this, &SelectableButton::onPressed);
}

SelectableButton::~SelectableButton()
{
    if (s_current == this) {
        s_current = nullptr;
    }
}

SelectableButton* SelectableButton::current() { return s_current; }

void SelectableButton::setSelected(bool p_selected)
{
    m_selected = p_selected;
    if (p_selected) {
        if (s_current && s_current != this) {
            s_current->setSelected(false);
        }
        s_current = this;
    } else if (s_current == this) {
        s_current = nullptr;
    }
    update();
}

bool SelectableButton::acceptsKey(int p_key) const
{
    if (isDigit(p_key)) {
        return m_keyMask & KeyboardDigits;
    }
    switch (p_key) {
    case Qt::Key_Period:
        return m_keyMask & KeyboardPoint;
    case Qt::Key_Minus:
        return m_keyMask & KeyboardMinus;
    case Qt::Key_Backspace:
        return m_keyMask & KeyboardDelete;
    default:
        return false;
    }
}

void SelectableButton::applyKey(int p_key)
{
    const bool wasSelected = m_selected;
    if (wasSelected) {
        setSelected(false);
    }
    const bool isCharacter = p_key == Qt::Key_Period || isDigit(p_key);
    if (!isCharacter && p_key != Qt::Key_Minus && p_key != Qt::Key_Backspace) {
        return;
    }
    QString edited = wasSelected ? QString() : text();
    if (p_key == Qt::Key_Backspace) {
        edited.chop(1);
    } else if (p_key == Qt::Key_Minus) {
        if (edited.startsWith(QLatin1Char('-'))) {
            edited.remove(0, 1);
        } else {
            edited.prepend(QLatin1Char('-'));
        }
    } else if (canAppend(edited, QChar(p_key))) {
        // The codes of these keys are their characters.
        edited.append(QChar(p_key));
    }
    setText(edited);
}

bool SelectableButton::canAppend(const QString& p_text, QChar p_ch)
{
    const QChar point = QLatin1Char('.');
    if (p_text.isEmpty()) {
        return p_ch != point;
    }
    if (p_text == QLatin1String("0")) {
        return p_ch == point;
    }
    if (p_text.size() >= 2 && p_ch == point && p_text.contains(point)) {
        return false;
    }
    const QString next = p_text + p_ch;
    const int pointAt = next.indexOf(point);
    return pointAt >= 0 ? next.size() - pointAt <= 3 : next.size() <= 6;
}

QString SelectableButton::shownText() const
{
    return fitted(text(), font(), width() - 2 * s_textMargin).text;
}

void SelectableButton::keyPressEvent(QKeyEvent* p_event)
{
    if (acceptsKey(p_event->key())) {
        applyKey(p_event->key());
        emit keyTypedSignal(p_event->key());
    }
}

void SelectableButton::paintEvent(QPaintEvent*)
{
    const FittedText shown = fitted(text(), font(), width() - 2 * s_textMargin);
    const QFontMetrics metrics(shown.font);
    QStylePainter painter(this);
    painter.setFont(shown.font);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = shown.text;
    option.fontMetrics = metrics;
    paintButton(painter, option);
    if (!m_selected || text().isEmpty()) {
        return;
    }
    const int markWidth = metrics.boundingRect(shown.text).width() + 2;
    const int markHeight = metrics.height();
    const QRect mark(static_cast<int>(width() / 2.0 - markWidth / 2.0),
                     static_cast<int>(height() / 2.0 - markHeight / 2.0), markWidth, markHeight);
    const QColor blue(0, 120, 215, 255);
    painter.setPen(blue);
    painter.setBrush(blue);
    painter.drawRect(mark);
    option.palette.setColor(QPalette::ButtonText, Qt::white);
    painter.drawControl(QStyle::CE_PushButtonLabel, option);
}

void SelectableButton::onPressed() { setSelected(!m_selected); }
