#pragma once

#include "base/systemlanguage.h"

#include <QMap>
#include <QObject>
#include <QPointer>

class QAction;
class QMenu;
class QTranslator;

/**
 * The user's own choice of language, with a menu for it. Its codes are those of LanguageCode.
 * Nothing in the program makes this object as yet: the language is the system's
 * (interfacelanguage.h). Its translations aren't among the resources either, and its slots have no
 * effect. Main thread only.
 */
class Language : public QObject
{
    Q_OBJECT

public:
    /** The one object, made at the first request. It lives to the end of the process. */
    static Language* instance();

    /** Takes the language from the setting "lang.current", or the system's if that is empty. */
    void init();
    /**
     * Puts the translation of a code in the place of the one before. An unknown code counts as
     * English. A translation that can't be loaded leaves the source texts, which are Chinese.
     */
    void setLanguage(int p_code);
    /** Adds a sub-menu of the languages to a menu. The current one is checked. */
    void addMenu(QMenu* p_menu);

public slots:
    void onChineseS();
    void onChineseT();
    void onEnglish();

private:
    Language() = default;
    Q_DISABLE_COPY(Language)

    QTranslator* m_translator = nullptr;
    int m_code = English;
    QMap<int, QPointer<QAction>> m_actions;
};
