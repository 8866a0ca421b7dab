#pragma once

#include <QPushButton>

/** A button with a picture for its plain and one for its marked state, for a variable. */
class varButton : public QPushButton
{
    Q_OBJECT

public:
    varButton(const QString& p_normalPath, const QString& p_markedPath,
              QWidget* p_parent = nullptr);

    void setMarked(bool p_marked);

    /** The picture of a variable that is not in use. */
    static QString unusedPicture();

private:
    QString m_normalPath;
    QString m_markedPath;
};
