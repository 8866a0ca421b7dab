#pragma once

#include <QPushButton>

/** A tab of the palette: a picture in the shape of a button. */
class tzlabel : public QPushButton
{
    Q_OBJECT

public:
    /**
     * The caption is the button's text, which never shows. The window flags are without effect: a
     * tab is always a child of its parent.
     */
    tzlabel(const QString& p_caption, QWidget* p_parent,
            Qt::WindowFlags p_flags = Qt::WindowFlags());

    /** Resource path of the picture that fills the tab. */
    QString imagePath() const { return m_imagePath; }
    void setImagePath(const QString& p_imagePath);
    /** The category whose blocks the tab brings up. */
    int categoryId() const { return m_categoryId; }
    void setCategoryId(int p_categoryId) { m_categoryId = p_categoryId; }
    /** Whether the palette shows this tab's category. */
    bool isActive() const { return m_active; }
    void setActive(bool p_active) { m_active = p_active; }

protected:
    void paintEvent(QPaintEvent* p_event) override;

private:
    Q_DISABLE_COPY(tzlabel)

    QString m_imagePath;
    int m_categoryId = 0;
    bool m_active = false;
};
