#include "shell/interfacelanguage.h"

#include "base/systemlanguage.h"

#include <QApplication>
#include <QFont>
#include <QTranslator>

namespace
{
/** Font size and translation of one kind of interface. */
struct Interface {
    int fontPoints;
    const char* translation;
};
const Interface s_inEnglish = {8, ":/vantrel_en.qm"};
const Interface s_inChinese = {10, ":/vantrel_zh_cn.qm"};
} // namespace

void setUpInterface(int p_languageCode, QTranslator& p_translator)
{
    const Interface& interface = p_languageCode == English ? s_inEnglish : s_inChinese;
    QApplication::setFont(QFont(QStringLiteral("微软雅黑"), interface.fontPoints));
    p_translator.load(QString::fromLatin1(interface.translation));
    QCoreApplication::installTranslator(&p_translator);
}
