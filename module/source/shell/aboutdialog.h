#pragma once

#include <QDialog>

/**
 * The about box: the program's name and version and a link to its site. It has no frame and can be
 * dragged by its body.
 */
class aboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit aboutDialog(QWidget* p_parent = nullptr);

protected:
    void paintEvent(QPaintEvent* p_event) override;

private:
    Q_DISABLE_COPY(aboutDialog)

    void addLabels();
    void addCloseButton();
};
