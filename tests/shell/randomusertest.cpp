#include "randomuser.h"

#include "modules/documentstate.h"
#include "support/system/setting.h"

#include <QTemporaryDir>
#include <QTest>

/**
 * A random user on the real window; after each action the document must be in order. A run is told
 * by its seed: RANDOM_USER_SEED=17 RANDOM_USER_RUNS=1 RANDOM_USER_TELL=1 does it once more and
 * tells each action as it comes. The long form is RANDOM_USER_RUNS=1000.
 */
class RandomUserTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { RandomUser::prepareApplication(); }

    void nothingBreaks_data()
    {
        RandomUser::addSeeds(setting("RANDOM_USER_SEED", 1), setting("RANDOM_USER_RUNS", 12));
    }

    void nothingBreaks()
    {
        QFETCH(int, seed);
        const int actions = setting("RANDOM_USER_ACTIONS", 200);
        QTemporaryDir folder;
        RandomUser user(static_cast<quint32>(seed), folder.path());
        for (int i = 1; i <= actions; ++i) {
            user.act();
            QStringList broken = user.broken();
            if (broken.isEmpty() && (i % 20 == 0 || i == actions)) {
                broken = user.brokenRoundTrip(i % 60 == 0 || i == actions);
            }
            if (!broken.isEmpty()) {
                documentModified = false;
                QFAIL(qPrintable(user.report(broken)));
            }
        }
        documentModified = false;
    }
};

QTEST_MAIN(RandomUserTest)
#include "randomusertest.moc"
