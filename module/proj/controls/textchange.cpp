#include "proj/controls/textchange.h"

#include <QString>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

void changeText(QTextDocument& p_document, const QString& p_from, const QString& p_to)
{
    const int shorter = qMin(p_from.size(), p_to.size());
    const int before = static_cast<int>(
        std::mismatch(p_from.cbegin(), p_from.cbegin() + shorter, p_to.cbegin()).first -
        p_from.cbegin());
    int behind = 0;
    while (behind < shorter - before &&
           p_from.at(p_from.size() - 1 - behind) == p_to.at(p_to.size() - 1 - behind)) {
        ++behind;
    }
    QTextCursor cursor(&p_document);
    cursor.beginEditBlock();
    cursor.setPosition(before);
    cursor.setPosition(p_from.size() - behind, QTextCursor::KeepAnchor);
    cursor.insertText(p_to.mid(before, p_to.size() - before - behind));
    cursor.endEditBlock();
}
