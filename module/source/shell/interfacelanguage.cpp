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
    /** Of Qt's own texts; null for none, which are English. */
    const char* translationOfQt;
};
const Interface s_inEnglish = {8, ":/vantrel_en.qm", nullptr};
const Interface s_inChinese = {10, ":/vantrel_zh_cn.qm", ":/qtbase_zh_CN.qm"};
} // namespace

void setUpInterface(int p_languageCode, QTranslator& p_translator, QTranslator& p_ofQt)
{
    const Interface& interface = p_languageCode == English ? s_inEnglish : s_inChinese;
    QApplication::setFont(QFont(QStringLiteral("微软雅黑"), interface.fontPoints));
    if (interface.translationOfQt && p_ofQt.load(QLatin1String(interface.translationOfQt))) {
        QCoreApplication::installTranslator(&p_ofQt);
    }
    p_translator.load(QString::fromLatin1(interface.translation));
    QCoreApplication::installTranslator(&p_translator);
}
