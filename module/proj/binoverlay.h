#pragma once

#include <QLabel>

/** The pale sheet with a bin that lies over the palette while a block is dragged back to it. */
class BinOverlay : public QLabel
{
    Q_OBJECT

public:
    explicit BinOverlay(QWidget* p_parent = nullptr);

    /** Resource path of the picture in the middle of the sheet. */
    QString imagePath() const { return m_imagePath; }
    void setImagePath(const QString& p_imagePath);

protected:
    void paintEvent(QPaintEvent* p_event) override;

private:
    Q_DISABLE_COPY(BinOverlay)

    QString m_imagePath;
};
