#include "shell/appearance.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

/** What Qt's own dialogs look like in the program's style. */
class AppearanceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        setUpAppearance();
    }

    void aFileDialogShowsWholeDates()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("square.tlrx")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QFileDialog dialog(nullptr, QString(), folder.path());
        dialog.setViewMode(QFileDialog::Detail);
        dialog.show();
        auto* view = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
        QVERIFY(view);
        QTRY_VERIFY(view->model()->rowCount(view->rootIndex()) == 1);
        const int dates = 3;
        const QModelIndex date = view->model()->index(0, dates, view->rootIndex());
        QVERIFY(!date.data().toString().isEmpty());
        const int margin = 6;
        const int needed = view->fontMetrics().horizontalAdvance(date.data().toString()) + margin;
        QTRY_VERIFY2(
            view->visualRect(date).width() >= needed,
            qPrintable(
                QStringLiteral("%1 for %2").arg(view->visualRect(date).width()).arg(needed)));
        // All that is in the view, with nothing beside.
        QVERIFY(view->visualRect(date).right() <= view->viewport()->width());
    }
};

QTEST_MAIN(AppearanceTest)
#include "appearancetest.moc"
