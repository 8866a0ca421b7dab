#include "support/system/menuhand.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QTest>
#include <QTimer>

bool clickEntry(QMenu& p_menu, const QString& p_text)
{
    const QList<QAction*> entries = p_menu.actions();
    for (QAction* entry : entries) {
        if (entry->text() == p_text) {
            QTest::mouseClick(&p_menu, Qt::LeftButton, Qt::NoModifier,
                              p_menu.actionGeometry(entry).center());
            return true;
        }
    }
    return false;
}

bool chooseFromMenu(QWidget& p_widget, const QString& p_text)
{
    // A button runs its menu within the press.
    bool looking = true;
    bool found = false;
    QElapsedTimer time;
    QTimer timer;
    const auto look = [&] {
        if (!looking) {
            return;
        }
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            looking = false;
            found = clickEntry(*menu, p_text);
            menu->close();
        } else if (time.elapsed() > 2000) {
            looking = false;
        }
    };
    QObject::connect(&timer, &QTimer::timeout, look);
    time.start();
    timer.start(10);
    QTest::mouseClick(&p_widget, Qt::LeftButton);
    while (looking) {
        QTest::qWait(10);
    }
    return found;
}
