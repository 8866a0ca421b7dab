#pragma once

#include <QString>

class QMenu;
class QWidget;

/** Clicks the entry of a text in a menu that is shown; false if there is none. */
bool clickEntry(QMenu& p_menu, const QString& p_text);

/**
 * Clicks a widget that answers with a menu, and an entry of that menu. False if no menu comes up
 * within two seconds, or one without the entry. Returns when what the entry does is over.
 */
bool chooseFromMenu(QWidget& p_widget, const QString& p_text);
