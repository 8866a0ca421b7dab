#pragma once

#include <QClipboard>
#include <QMimeData>
#include <QObject>
#include <QPoint>
#include <QPointer>

class Document;
class supermodule;

/**
 * The blocks on the system clipboard, under a format of their own, and the frame around those that
 * were copied last.
 */
class BlockClipboard : public QObject
{
    Q_OBJECT

public:
    explicit BlockClipboard(Document& p_document, QObject* p_parent = nullptr);

    /** True when the clipboard holds blocks. */
    static bool hasBlocks();
    /**
     * Puts a block with all that follows on the clipboard and frames it. Null, and the main block,
     * of which there is one, give a form without blocks, and the frame stays where it was.
     */
    void copy(supermodule* p_module);
    /** Takes the frame away, and off the clipboard what this has put there. */
    void undoCopy();
    /** Pastes what is on the clipboard, at a scene point. */
    void paste(const QPoint& p_at);
    /** Pastes it down to the right of the source of the last copy. */
    void pasteBesideSource();
    /** Frames all that hangs under the source of the last copy. */
    void showFrame();
    /** Forgets the source of the last copy: the document is another one. */
    void forget() { m_copied.clear(); }
    /** A block is about to be deleted: with the source its copy goes off the clipboard. */
    void removing(const supermodule* p_module);

public slots:
    void OnClipboardChanged(QClipboard::Mode p_mode);

private:
    /** Empties the clipboard, unless what is there comes from somebody else. */
    void emptyClipboard();

    Document& m_document;
    QPointer<supermodule> m_copied;
    /** What the last copy put on the clipboard, which owns it; null once that holds other data. */
    QPointer<const QMimeData> m_data;
    /** True while the change of the clipboard that is to be reported is our own. */
    bool m_ownClipboardChange = false;
};
