#include "proj/controls/tzlineedit.h"

tzLineedit::tzLineedit(QWidget* p_parent) : QLineEdit(p_parent)
{
    setStyleSheet(QStringLiteral("border-image: url(:/xunhuancishu-dikuangpng.png);"));
}
