#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/mainmodule.h"
#include "modules/moduletree.h"
#include "project/projectfile.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentpicture.h"
#include "support/system/datatable.h"
#include "support/system/kitcopy.h"

#include <QDir>
#include <QDirIterator>
#include <QDomDocument>
#include <QtTest>

namespace
{
ProcessResult everyBlock(const QStringList& p_arguments)
{
    return runProcess(QStringLiteral(PYTHON),
                      QStringList{QStringLiteral("-B"), QStringLiteral(EVERY_BLOCK)} + p_arguments,
                      QDir::tempPath());
}

/** "900 n=12 port=3": a block's type and own attributes, in the order of their names. */
QString position(const QString& p_type, const BlockAttributes& p_attributes)
{
    return (p_type + ' ' + joinedAttributes(p_attributes)).trimmed();
}

QString position(const QDomElement& p_element)
{
    return position(p_element.attribute(QStringLiteral("id")), ownAttributes(p_element));
}

QString position(const supermodule* p_module)
{
    return position(QString::number(p_module->id), ownAttributes(p_module));
}
} // namespace

/**
 * One program of all blocks with every choice of every chooser and the ends of all numbers, from
 * the project file to the trace of the controller. Program and expectation come out of
 * everyblock.py, whose tables were worked out by hand from what each block promises, on the
 * controller and not in its text; Tiler's own tables and generator have no part in them.
 */
class EveryBlockTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(m_kit.isValid(), "TILER_KIT doesn't name the folder of a kit");
        const ProcessResult written = everyBlock({QStringLiteral("project"), project()});
        QCOMPARE(written.errors, QString());
        QCOMPARE(written.exitCode, 0);

        QDomDocument document;
        QVERIFY(document.setContent(readWhole(project())));
        const QDomNodeList modules = document.elementsByTagName(QStringLiteral("module"));
        for (int i = 0; i < modules.size(); ++i) {
            m_positions.insert(position(modules.at(i).toElement()));
        }

        CanvasFixture canvas;
        QCOMPARE(canvas.view.openFile(project()), int(ProjectOpened));
        QCOMPARE(canvas.blocks().size(), modules.size());
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        m_text = canvas.view.generateProjectCode(1);
        const ProcessResult compiled = m_kit.compile(QStringLiteral("everyblock"), m_text);
        QCOMPARE(compiled.errors, QString());
        QCOMPARE(compiled.exitCode, 0);
    }

    void theProgramHasEveryBlockAsItComesFromThePalette()
    {
        QStringList missing;
        for (const BlockRecord& record : blockRecords()) {
            const std::unique_ptr<supermodule> block(createModuleFromId(record.id));
            if (!m_positions.contains(position(block.get()))) {
                missing << position(block.get());
            }
        }
        QVERIFY2(missing.isEmpty(), qPrintable("by tests/data/blocks.json there is no " +
                                               missing.join(QLatin1String(", "))));
    }

    void theProgramHasEveryChoiceOfTheBlocks()
    {
        QStringList missing;
        for (const BlockData& data : blockData()) {
            for (const BlockData::Choice& choice : data.choices()) {
                const QString place =
                    position(QString::number(data.id()), parsedAttributes(choice.attributes));
                // Of what is typed there is no end.
                if (choice.give.filter(QStringLiteral("keys")).isEmpty() &&
                    !m_positions.contains(place)) {
                    missing << place;
                }
            }
        }
        QCOMPARE(missing.join(QLatin1Char('\n')), QString());
    }

    void theProgramHasEveryPictureOfThePanels_data()
    {
        // The first is what the attribute is for the picture 0.
        columns<int, QString, int, bool>("id", "folder", "first", "onBothDisplays");
        for (const BlockData& data : blockData()) {
            for (const BlockData::Button& button : data.buttons()) {
                const bool isVoice = button.opens.startsWith(QLatin1String("voice"));
                if (!isVoice && !button.opens.startsWith(QLatin1String("expression"))) {
                    continue;
                }
                const BlockAttributes first = parsedAttributes(data.choices().first().attributes);
                // The pictures of voices are counted from 1.
                QTest::newRow(qPrintable(data.value("class")))
                    << data.id()
                    << QString(":/" + button.opens).replace(QLatin1Char(' '), QLatin1Char('/'))
                    << first.value(QStringLiteral("n")).toInt() - (isVoice ? 1 : 0)
                    << first.contains(QStringLiteral("port"));
            }
        }
    }

    void theProgramHasEveryPictureOfThePanels()
    {
        QFETCH(int, id);
        QFETCH(QString, folder);
        QFETCH(int, first);
        QFETCH(bool, onBothDisplays);
        const QFileInfoList pictures = QDir(folder).entryInfoList({QStringLiteral("*[0-9].png")});
        QVERIFY(pictures.size() > 1);
        QStringList missing;
        for (const QFileInfo& picture : pictures) {
            const QString place =
                QStringLiteral("%1 n=%2").arg(id).arg(picture.completeBaseName().toInt() + first);
            const QStringList ends =
                onBothDisplays ? QStringList{" port=2", " port=3"} : QStringList{""};
            for (const QString& end : ends) {
                if (!m_positions.contains(place + end)) {
                    missing << place + end;
                }
            }
        }
        QCOMPARE(missing.join(QLatin1Char('\n')), QString());
    }

    void aPictureShowsTheDotsThatTheControllerShows_data()
    {
        // Displays are eight bytes each, the leftmost dot the highest bit.
        columns<QString, QStringList>("picture", "displays");
        const QStringList lines = everyBlock({QStringLiteral("pictures")})
                                      .output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& line : lines) {
            const QStringList words = line.split(QLatin1Char(' '));
            QTest::newRow(qPrintable(words.first())) << words.first() << QStringList(words.mid(1));
        }
        // Not the fine ones, whose names end in "@2x".
        QDirIterator pictures(QStringLiteral(":/expression"),
                              {QStringLiteral("[0-9].png"), QStringLiteral("[0-9][0-9].png")},
                              QDir::Files, QDirIterator::Subdirectories);
        int count = 0;
        for (; pictures.hasNext(); pictures.next()) {
            ++count;
        }
        if (lines.size() != count) {
            QTest::newRow("not every picture is there") << QString() << QStringList();
        }
    }

    void aPictureShowsTheDotsThatTheControllerShows()
    {
        QFETCH(QString, picture);
        QFETCH(QStringList, displays);
        const QImage image(":/expression/" + picture);
        QVERIFY(!image.isNull());
        // A symbol's display is the picture; those of a face stand side by side in a head.
        const int count = displays.size();
        const int side = count == 1 ? image.width() : 34;
        // The dots stand a whole number of pixels apart, in the middle of the display.
        const int pitch = (side - 2) / 8;
        const qreal first = (side - 7 * pitch) / 2.0;
        for (int display = 0; display < count; ++display) {
            const int left = count == 1 ? 0 : 3 + 36 * display;
            const int top = count == 1 ? 0 : 10;
            QByteArray shown;
            for (int row = 0; row < 8; ++row) {
                int byte = 0;
                for (int column = 0; column < 8; ++column) {
                    const QColor dot = image.pixelColor(int(left + first + pitch * column),
                                                        int(top + first + pitch * row));
                    // Lit dots are amber, the others and the ground a dark blue.
                    byte = byte * 2 + (dot.red() > dot.blue() ? 1 : 0);
                }
                shown.append(static_cast<char>(byte));
            }
            QCOMPARE(QString::fromLatin1(shown.toHex()), displays.at(display));
        }
    }

    void theProgramComesBackFromAFileOfItsOwn()
    {
        CanvasFixture canvas;
        QCOMPARE(canvas.view.openFile(project()), int(ProjectOpened));
        const QString path = m_kit.filePath(QStringLiteral("saved.tlrx"));
        QVERIFY(canvas.view.saveFile(path));
        canvas.view.newProgram();
        QCOMPARE(canvas.view.openFile(path), int(ProjectOpened));
        QCOMPARE(canvas.view.generateProjectCode(1), m_text);
    }

    void theControllerDoesWhatTheBlocksPromise_data()
    {
        QTest::addColumn<QString>("run");
        const ProcessResult runs = everyBlock({QStringLiteral("runs")});
        const QStringList names = runs.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& name : names) {
            QTest::newRow(qPrintable(name)) << name;
        }
        if (!names.contains(QStringLiteral("whole"))) {
            QTest::newRow("there is no run") << QString();
        }
    }

    void theControllerDoesWhatTheBlocksPromise()
    {
        QFETCH(QString, run);
        const ProcessResult result = everyBlock(
            {QStringLiteral("run"), run, m_kit.kit(), m_kit.binary(QStringLiteral("everyblock"))});
        QVERIFY2(result.errors.isEmpty(), qPrintable(result.errors));
        QVERIFY2(result.exitCode == 0, qPrintable(result.output));
    }

    void theDeepestNestingCompilesAndRuns_data()
    {
        columns<QByteArray, QString>("loop", "sensor");
        QTest::newRow("so many times") << QByteArray("301\" n=\"10") << "touch:1=0";
        QTest::newRow("for ever") << QByteArray("303") << "touch:1=0";
        QTest::newRow("while something is near") << QByteArray("306\" port=\"4") << "analogue:4=1";
        QTest::newRow("while it is touched") << QByteArray("307\" port=\"5") << "touch:5=1";
    }

    void theDeepestNestingCompilesAndRuns()
    {
        QFETCH(QByteArray, loop);
        QFETCH(QString, sensor);
        const QByteArray open = "<module id=\"" + loop + "\"><left>";
        const QString path = m_kit.filePath(QStringLiteral("deepest.tlrx"));
        QVERIFY(writeWhole(path, "<!DOCTYPE vantrel>\n<vantrel><basenode><module id=\"0\"/>" +
                                     open.repeated(MaximalNesting) + "<module id=\"103\"/>" +
                                     QByteArray("</left></module>").repeated(MaximalNesting) +
                                     "</basenode></vantrel>\n"));

        CanvasFixture canvas;
        QCOMPARE(canvas.view.openFile(path), int(ProjectOpened));
        QCOMPARE(nestingDepth(canvas.main()), MaximalNesting);
        const ProcessResult compiled =
            m_kit.compile(QStringLiteral("deepest"), canvas.view.generateProjectCode(1));
        QCOMPARE(compiled.errors, QString());
        QCOMPARE(compiled.exitCode, 0);
        const ProcessResult ran =
            m_kit.run(QStringLiteral("deepest"), {QStringLiteral("--limit"), QStringLiteral("1"),
                                                  QStringLiteral("--sensor"), sensor});
        QCOMPARE(ran.errors, QString());
        // Only the limit ends them.
        QCOMPARE(ran.exitCode, 3);
        QVERIFY2(ran.output.contains(QStringLiteral("motor A (1) speed 50")),
                 qPrintable(ran.output));
    }

private:
    QString project() const { return m_kit.filePath(QStringLiteral("everyblock.tlrx")); }

    KitCopy m_kit;
    QSet<QString> m_positions;
    QString m_text;
};

QTEST_MAIN(EveryBlockTest)
#include "everyblocktest.moc"
