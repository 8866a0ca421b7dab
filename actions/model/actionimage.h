#pragma once

#include "actions/model/actionblock.h"

#include <QByteArray>

class QString;

/** What ActionImage::appendTo() writes. */
enum class ActionTail { Image, ImageAndTrailer };

/**
 * The robot actions of a project: the one image that rides behind the XML of a project file and
 * behind a compiled program, and whether it has changed since it was last saved or loaded. A value;
 * a copy is an image of its own. What is changed through page() and step() leaves the modified flag
 * to the one who changes it.
 */
class ActionImage
{
public:
    /** The size of every image in bytes. */
    static constexpr int Size = sizeof(ActionBlock);

    /** The image as it stands in a file: always Size bytes. */
    QByteArray bytes() const;

    /**
     * Takes the last Size bytes of p_bytes as the image and clears the modified flag. Bytes with a
     * format mark that isn't 0 reset the image. False, with nothing changed, if there are fewer.
     */
    bool setBytes(const QByteArray& p_bytes);

    /**
     * setBytes() with the end of a file. False, with nothing changed, if it can't be read or is too
     * short.
     */
    bool loadFrom(const QString& p_path);

    /**
     * Appends the image to a file, with or without the trailer of a compiled program, in one
     * opening of it, creating it if need be, and clears the modified flag. False, with nothing done
     * and the flag as it was, if the file can't be opened. A write that breaks off is not noticed.
     */
    bool appendTo(const QString& p_path, ActionTail p_tail = ActionTail::Image);

    /**
     * Clears the image. Its steps then have the run time 100, unlike those of a new one. The
     * modified flag stays.
     */
    void reset();

    bool isModified() const { return m_modified; }
    void setModified(bool p_modified) { m_modified = p_modified; }

    /** A page, 0 to 127; null for any other number. It lives as long as the image. */
    ActionPage* page(int p_page);
    const ActionPage* page(int p_page) const;

    /** A step, 0 to 7, used or not, of a page; null if either number is out of range. */
    ActionStep* step(int p_page, int p_step);
    const ActionStep* step(int p_page, int p_step) const;

    /** A page's name as actionPageName() reads it; empty for a number that no page has. */
    QByteArray pageName(int p_page) const;

private:
    ActionBlock m_block = builtActionBlock();
    bool m_modified = false;
};

static_assert(ActionImage::Size == 57472, "project files hold images of this size");
