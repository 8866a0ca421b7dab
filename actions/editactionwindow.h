#pragma once

#include <QMainWindow>

class ActionImage;

/**
 * The editor of a project's robot actions. Shows the image that it is given, which it doesn't own
 * and which must live longer.
 */
class editActionWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit editActionWindow(ActionImage& p_image, QWidget* p_parent = nullptr);

    /** Appends the image to a file, as ActionImage::appendTo() does. */
    void appendActionBlock(const QString& p_path);

    /** Takes the image from a file's end, as ActionImage::loadFrom() does. */
    void loadActionBlock(const QString& p_path);

    /** Clears the image. Its modified flag stays. */
    void resetActionBlock();

private:
    Q_DISABLE_COPY(editActionWindow)

    ActionImage& m_image;
};
