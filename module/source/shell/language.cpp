#include "shell/language.h"

#include "base/config.h"
#include "base/tilerlog.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QTranslator>

namespace
{
QString translationOf(int p_code)
{
    switch (p_code) {
    case SimplifiedChinese:
        return QStringLiteral(":/sketchpad_zh_cn.qm");
    case TraditionalChinese:
        return QStringLiteral(":/sketchpad_zh_tw.qm");
    default:
        return QStringLiteral(":/sketchpad_en.qm");
    }
}
} // namespace

Language* Language::instance()
{
    static Language s_instance;
    return &s_instance;
}

void Language::init()
{
    const QString chosen = getString(QStringLiteral("lang.current"));
    setLanguage(chosen.isEmpty() ? systemLanguageCode() : chosen.toInt());
}

void Language::setLanguage(int p_code)
{
    m_code = p_code;
    if (m_translator) {
        QCoreApplication::removeTranslator(m_translator);
        delete m_translator;
    }
    m_translator = new QTranslator(this);
    if (!m_translator->load(translationOf(p_code))) {
        qCDebug(tilerLog, "load translator file error");
    }
    QCoreApplication::installTranslator(m_translator);
}

void Language::addMenu(QMenu* p_menu)
{
    QMenu* languages = p_menu->addMenu(tr("选择语言"));
    m_actions[SimplifiedChinese] =
        languages->addAction(tr("简体中文"), this, &Language::onChineseS);
    m_actions[TraditionalChinese] =
        languages->addAction(tr("繁体中文"), this, &Language::onChineseT);
    m_actions[English] = languages->addAction(tr("English"), this, &Language::onEnglish);
    for (QAction* action : qAsConst(m_actions)) {
        action->setCheckable(true);
    }
    // A setting may hold a code that has no entry.
    if (QAction* current = m_actions.value(m_code)) {
        current->setChecked(true);
    }
}

void Language::onChineseS() {}

void Language::onChineseT() {}

void Language::onEnglish() {}
