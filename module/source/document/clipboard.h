#pragma once

#include <QObject>
#include <QString>

/** A small helper around the system clipboard, for texts under a format of one's own. */
class ClipBoard : public QObject
{
    Q_OBJECT

public:
    /** Puts a text on the clipboard, in UTF-8 under p_format. */
    static void setData(const QString& p_format, const QString& p_text);
    /** True when the clipboard holds data of a format. */
    static bool hasFormat(const QString& p_format);
    /**
     * The text under a format, read as UTF-8 up to its first zero byte; null when the clipboard
     * doesn't hold the format, empty when it holds nothing.
     */
    static QString data(const QString& p_format);
};
