#include "proj/controls/varbutton.h"

varButton::varButton(const QString& p_normalPath, const QString& p_markedPath, QWidget* p_parent)
    : QPushButton(p_parent), m_normalPath(p_normalPath), m_markedPath(p_markedPath)
{
    setMarked(false);
}

void varButton::setMarked(bool p_marked)
{
    setStyleSheet(
        QStringLiteral("QPushButton{background-image:url(%1);background-color:transparent;}")
            .arg(p_marked ? m_markedPath : m_normalPath));
}

QString varButton::unusedPicture() { return QStringLiteral(":/weiyongbianliang-nol.png"); }
