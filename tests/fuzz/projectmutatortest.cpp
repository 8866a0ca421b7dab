#include "projectmutator.h"
#include "project/projectfile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/** What makes inputs for the fuzzer: most of its texts must get through to the reader. */
class ProjectMutatorTest : public QObject
{
    Q_OBJECT

private slots:
    void theTagOfAChangedTextIsPutRight()
    {
        QByteArray text = example();
        QCOMPARE(open(text), int(ProjectOpened));
        QCOMPARE(withRightTag(text), text);
        text.replace("Square", "Circle");
        QCOMPARE(open(text), int(ProjectWrongTag));
        const QByteArray right = withRightTag(text);
        QCOMPARE(open(right), int(ProjectOpened));
        QVERIFY(right.contains("Circle"));
        QCOMPARE(right.left(right.indexOf("<tagCheck")), text.left(text.indexOf("<tagCheck")));
    }

    void aTextWithoutATagStaysAsItIs()
    {
        for (const char* text :
             {"", "<vantrel/>", "no project", "<tagCheck value=\"", "<tagCheck value="}) {
            QCOMPARE(withRightTag(text), QByteArray(text));
        }
    }

    void aChangedTreeIsAProjectThatOpens()
    {
        const QByteArray text = example();
        int changed = 0;
        QByteArray grown = text;
        for (quint32 seed = 0; seed < 200; ++seed) {
            const QByteArray once = withChangedTree(text, text, seed);
            QCOMPARE(open(once), int(ProjectOpened));
            changed += once != text ? 1 : 0;
            // Change upon change, as the fuzzer does it.
            grown = withChangedTree(grown, QByteArray(), seed);
            QCOMPARE(open(grown), int(ProjectOpened));
        }
        // A few take away what isn't there.
        QVERIFY2(changed > 150, qPrintable(QString::number(changed)));
        QCOMPARE(withChangedTree("no project", text, 1), QByteArray("no project"));
    }

    void theSameSeedGivesTheSameChange()
    {
        const QByteArray text = example();
        // Attributes of an element stand in an order that hangs on this.
        qSetGlobalQHashSeed(0);
        for (quint32 seed = 0; seed < 20; ++seed) {
            QCOMPARE(withChangedTree(text, text, seed), withChangedTree(text, text, seed));
        }
    }

    void blocksAreTakenFromTheDonor()
    {
        const QByteArray donor("<vantrel><basenode><module id=\"906\"/></basenode></vantrel>");
        const QByteArray text("<vantrel><basenode><module id=\"103\"/></basenode></vantrel>");
        int taken = 0;
        for (quint32 seed = 0; seed < 200; ++seed) {
            const QByteArray changed = withChangedTree(text, donor, seed);
            taken += changed.contains("id=\"103\"") && changed.contains("id=\"906\"") ? 1 : 0;
        }
        QVERIFY2(taken > 10, qPrintable(QString::number(taken)));
    }

private:
    QByteArray example() const
    {
        QFile file(
            QDir(QStringLiteral(CORPUS_DIR)).filePath(QStringLiteral("example-square.tlrx")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    int open(const QByteArray& p_text) const
    {
        QFile file(m_dir.filePath(QStringLiteral("a.tlrx")));
        if (!file.open(QIODevice::WriteOnly) || file.write(p_text) != p_text.size()) {
            return -1;
        }
        file.close();
        ProjectContent project;
        return readProject(file.fileName(), project);
    }

    QTemporaryDir m_dir;
};

QTEST_MAIN(ProjectMutatorTest)
#include "projectmutatortest.moc"
