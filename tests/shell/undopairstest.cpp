#include "randomuser.h"

#include "modules/documentstate.h"
#include "support/system/setting.h"

#include <QTemporaryDir>
#include <QTest>

/**
 * A random user on the real window; whatever was done before, an undo that a redo follows at once
 * changes nothing, nor does a redo that an undo follows. A run is told by its seed:
 * UNDO_PAIRS_SEED=17 UNDO_PAIRS_RUNS=1 RANDOM_USER_TELL=1 does it once more and tells each action.
 * The long form is UNDO_PAIRS_RUNS=1000, which makes more than 100,000 pairs.
 */
class UndoPairsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { RandomUser::prepareApplication(); }

    void undoAndRedoAreEachOthersInverse_data()
    {
        RandomUser::addSeeds(setting("UNDO_PAIRS_SEED", 5001), m_runs);
    }

    void undoAndRedoAreEachOthersInverse()
    {
        QFETCH(int, seed);
        QTemporaryDir folder;
        RandomUser user(static_cast<quint32>(seed), folder.path());
        for (int i = 1; i <= 200; ++i) {
            user.act();
            const QStringList broken = user.brokenPairs(i % 25 == 0);
            if (!broken.isEmpty()) {
                documentModified = false;
                QFAIL(qPrintable(user.report(broken)));
            }
        }
        documentModified = false;
        m_pairs += user.pairs();
    }

    void cleanupTestCase()
    {
        qInfo("%d pairs", m_pairs);
        QVERIFY(m_pairs > 50 * m_runs);
    }

private:
    const int m_runs = setting("UNDO_PAIRS_RUNS", 12);
    int m_pairs = 0;
};

QTEST_MAIN(UndoPairsTest)
#include "undopairstest.moc"
