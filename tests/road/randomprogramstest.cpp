#include "modules/catalogue/blocktables.h"
#include "modules/documentstate.h"
#include "randomprogram.h"
#include "support/canvas/documentpicture.h"
#include "support/system/kitcopy.h"
#include "support/system/setting.h"

#include <QApplication>
#include <QDir>
#include <QDomDocument>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

namespace
{
/** From so many programs on, everything must have occurred. */
const int s_manyPrograms = 40;
const int s_deepestLoop = 6;
/** Seconds of the controller that a program is watched for. */
const int s_watched = 20;

// How a program ends, as follow.py says it.
const QString s_returns = QStringLiteral("returns");
const QString s_endless = QStringLiteral("endless");
const QString s_unknown = QStringLiteral("unknown");

/** A trace without times, dots of displays and names of faces. */
QStringList comparableTrace(const QString& p_output)
{
    QStringList lines = p_output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.replaceInStrings(QRegularExpression(QStringLiteral("^\\[ *[0-9.]+\\] ")), QString());
    lines.replaceInStrings(QRegularExpression(QStringLiteral("^(display 2 3 emoji [0-9]+) .*$")),
                           QStringLiteral("\\1"));
    return lines.filter(QRegularExpression(QStringLiteral("[^ .#]")));
}
} // namespace

/**
 * Programs made at random by the hands of a user, of all blocks: built by drops, saved and opened,
 * copied and pasted, undone and redone, turned into text, and some of them compiled and run. A
 * program is told by its seed: RANDOM_PROGRAMS_SEED=17 RANDOM_PROGRAMS_RUNS=1 makes it once more.
 * The long form is RANDOM_PROGRAMS_RUNS=1000. One program in twenty is compiled and runs on the
 * emulated controller; RANDOM_PROGRAMS_EACH=5 makes it one in five.
 */
class RandomProgramsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QApplication::setQuitOnLastWindowClosed(false);
        qSetGlobalQHashSeed(0);
        QVERIFY2(m_kit.isValid(), "TILER_KIT doesn't name the folder of a kit");
        m_first = setting("RANDOM_PROGRAMS_SEED", m_first);
        m_runs = setting("RANDOM_PROGRAMS_RUNS", m_runs);
    }

    void aProgramComesThroughAll_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = m_first; seed < m_first + m_runs; ++seed) {
            QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(seed))) << seed;
        }
    }

    void aProgramComesThroughAll()
    {
        QFETCH(int, seed);
        const QTemporaryDir folder;
        RandomProgram program(static_cast<quint32>(seed), folder.path());
        QStringList broken = program.build();
        const QString description = program.description();
        if (broken.isEmpty()) {
            broken = put(program, seed - m_first);
        }
        if (broken.isEmpty() && seed % 3 == 0) {
            broken = program.brokenHistoryFromNothing();
        }
        m_types += program.types();
        m_deepest = qMax(m_deepest, program.deepest());
        for (auto it = program.tally().constBegin(); it != program.tally().constEnd(); ++it) {
            m_tally[it.key()] += it.value();
        }
        ++m_programs;
        if (!broken.isEmpty()) {
            const QString message = QStringLiteral("Seed %1:\n%2\nThe program is:\n%3")
                                        .arg(seed)
                                        .arg(broken.join(QLatin1Char('\n')), description);
            QFAIL(qPrintable(message));
        }
    }

    void everythingOccurs()
    {
        if (m_programs < s_manyPrograms) {
            QSKIP("too few programs were made for everything to occur");
        }
        for (const BlockRecord& record : blockRecords()) {
            const QString id = QString::number(record.id);
            QVERIFY2(record.category < 0 || m_types.contains(record.id), qPrintable(id));
            QVERIFY2(m_values.contains(id + QStringLiteral(" id")), qPrintable(id));
        }
        // Every parameter had other values than its first.
        static const QStringList s_fixed = {QStringLiteral("id"), QStringLiteral("ownid"),
                                            QStringLiteral("moduleKey")};
        for (auto it = m_values.constBegin(); it != m_values.constEnd(); ++it) {
            const QString attribute = it.key().section(QLatin1Char(' '), 1);
            QVERIFY2(s_fixed.contains(attribute) || it.key().startsWith(QLatin1String("0 ")) ||
                         it->size() > 1,
                     qPrintable(it.key()));
        }
        QCOMPARE(m_deepest, s_deepestLoop);
        static const char* const s_done[] = {"loose drops",
                                             "drops into a chain",
                                             "drops that cut a chain",
                                             "choices in the pop-up",
                                             "choices in the palette",
                                             "numbers tapped",
                                             "numbers typed",
                                             "blocks found in the text",
                                             "copies",
                                             "copies of copies",
                                             "undone: add",
                                             "undone: paste",
                                             "undone: delete",
                                             "undone: throw away"};
        for (const char* done : s_done) {
            QVERIFY2(m_tally[QString::fromLatin1(done)] > m_programs / 20, done);
        }
        QVERIFY(m_ends[s_returns] > 0);
        QVERIFY(m_ends[s_endless] > 0);
        QStringList tally;
        for (auto it = m_tally.constBegin(); it != m_tally.constEnd(); ++it) {
            tally << QStringLiteral("%1 %2").arg(it.value()).arg(it.key());
        }
        qInfo("%d programs; run: %d that end, %d endless, %d not followed to the end; %s",
              m_programs, m_ends[s_returns], m_ends[s_endless], m_ends[s_unknown],
              qPrintable(tally.join(QStringLiteral(", "))));
    }

private:
    QStringList put(RandomProgram& p_program, int p_place)
    {
        // Copies before the project was ever saved, or after: a stored block is built another way.
        QStringList broken = p_program.brokenCodePane();
        if (broken.isEmpty() && p_place % 2 == 0) {
            broken = p_program.brokenCopy();
        }
        if (broken.isEmpty()) {
            broken = p_program.brokenTrip();
        }
        if (broken.isEmpty() && p_place % 2 != 0) {
            broken = p_program.brokenCopy();
        }
        if (broken.isEmpty()) {
            rememberValues(p_program.project());
            if (p_place % setting("RANDOM_PROGRAMS_EACH", 20) == 0) {
                broken = brokenOnTheController(p_program);
            }
        }
        if (broken.isEmpty()) {
            broken = p_program.brokenHistory();
        }
        return broken;
    }

    QStringList brokenOnTheController(const RandomProgram& p_program)
    {
        const QString name = QStringLiteral("random");
        const ProcessResult compiled = m_kit.compile(name, p_program.text());
        if (compiled.exitCode != 0 || !compiled.errors.isEmpty() ||
            QFileInfo(m_kit.binary(name)).size() == 0) {
            return {QStringLiteral("the compiler ends with %1: ").arg(compiled.exitCode) +
                    compiled.errors + QStringLiteral("\nThe text is:\n") + p_program.text()};
        }
        const QString project = m_kit.filePath(QStringLiteral("random.tlrx"));
        if (!writeWhole(project, p_program.project())) {
            return {QStringLiteral("the project can't be written")};
        }
        const ProcessResult followed = runProcess(
            QStringLiteral(PYTHON),
            {QStringLiteral("-B"), QStringLiteral(FOLLOW), project, QString::number(s_watched)},
            QDir::tempPath());
        QStringList expected = followed.output.split(QLatin1Char('\n'));
        if (followed.exitCode != 0 || expected.size() < 4) {
            return {QStringLiteral("follow.py says: ") + followed.errors};
        }
        const QStringList sensors =
            expected.takeFirst().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QString end = expected.takeFirst();
        expected.removeLast();
        const ProcessResult run =
            m_kit.run(name, QStringList{"--limit", QString::number(s_watched)} + sensors);
        ++m_ends[end];
        const QStringList found = comparableTrace(run.output);
        const bool sameTrace =
            end == s_returns ? found == expected : found.mid(0, expected.size()) == expected;
        const bool sameEnd = end == s_returns   ? run.exitCode == 0
                             : end == s_endless ? run.exitCode == 3
                                                : run.exitCode == 0 || run.exitCode == 3;
        if (sameTrace && sameEnd && run.errors.isEmpty()) {
            return {};
        }
        return {QStringLiteral("the program ends with %1: ").arg(run.exitCode) + run.errors +
                QStringLiteral("\nIt does:\n") + found.join(QLatin1Char('\n')) +
                QStringLiteral("\nand not:\n") + expected.join(QLatin1Char('\n')) +
                QStringLiteral("\nwith ") + sensors.join(QLatin1Char(' '))};
    }

    void rememberValues(const QByteArray& p_project)
    {
        QDomDocument document;
        document.setContent(p_project);
        const QDomNodeList blocks = document.elementsByTagName(QStringLiteral("module"));
        for (int i = 0; i < blocks.size(); ++i) {
            const QDomNamedNodeMap attributes = blocks.at(i).attributes();
            const QString id = blocks.at(i).toElement().attribute(QStringLiteral("id"));
            for (int k = 0; k < attributes.size(); ++k) {
                const QDomAttr attribute = attributes.item(k).toAttr();
                m_values[id + QLatin1Char(' ') + attribute.name()].insert(attribute.value());
            }
        }
    }

    KitCopy m_kit;
    int m_first = 1;
    int m_runs = 60;
    // What has occurred.
    int m_programs = 0;
    int m_deepest = 0;
    QMap<QString, int> m_tally;
    QHash<QString, int> m_ends;
    QMap<QString, QSet<QString>> m_values;
    QSet<int> m_types;
};

QTEST_MAIN(RandomProgramsTest)
#include "randomprogramstest.moc"
