#pragma once

#include <QLineEdit>

/** The text field of a variable or a count, on the picture of a field. */
class tzLineedit : public QLineEdit
{
    Q_OBJECT

public:
    explicit tzLineedit(QWidget* p_parent = nullptr);
};
