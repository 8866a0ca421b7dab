#pragma once

#include "generator/codemap.h"

#include <QObject>
#include <QPoint>

#include <optional>

class BlockMark;
class QTextBrowser;
class supermodule;
class TzProgramView;

/**
 * What the code pane shows, and how it belongs to the canvas: the text of the block under the mouse
 * is lit, and a press on text points at the block that it comes from.
 */
class CodePane : public QObject
{
    Q_OBJECT

public:
    /** Both must outlive this. */
    CodePane(QTextBrowser& p_browser, TzProgramView& p_view);

    /**
     * Generates the text of a language anew. Only what has changed of it is replaced, so that what
     * is in sight and what is selected stay.
     */
    void showCode(int p_language);

protected:
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    const supermodule* hovered() const;
    void light();
    void pointAtBlockOf(const QPoint& p_at);

    QTextBrowser& m_browser;
    TzProgramView& m_view;
    /** Its parent is the view's viewport. */
    BlockMark* m_mark;
    /** What the browser holds, and where that comes from. */
    QString m_text;
    CodeMap m_map;
    /** Where the mouse was seen on the canvas last, and whether it is there. */
    QPoint m_mouse;
    bool m_isOver = false;
    /** The key of the block that is lit, as far as that is known. */
    std::optional<int> m_lit;
};
