#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/choosers.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/graphicsitem_param.h"
#include "modules/modulehost.h"
#include "modules/supermodule.h"

#include <QAbstractButton>
#include <QGraphicsScene>
#include <QPixmap>
#include <QtTest>

namespace
{
/** Notes whether what a block asks for is in the table. */
class RecordingHost : public ModuleHost
{
public:
    RecordingHost() { setModuleHost(this); }
    ~RecordingHost() override { setModuleHost(nullptr); }
    void raiseNumKeyboard(uint32_t p_option) override { note("keyboard", int(p_option), p_option); }
    void raiseVoice(int p_set) override
    {
        note("sounds", p_set, findChooser(ChooserKind::Sounds, p_set));
    }
    void raiseExpression(int p_set) override
    {
        note("symbols", p_set, findChooser(ChooserKind::Symbols, p_set));
    }
    void raisePanel(int p_type, int) override
    {
        note("panel", p_type, findChooser(ChooserKind::Panel, p_type));
    }
    void noteParameter() override {}

    int asked = 0;
    QStringList unknown;

private:
    void note(const char* p_what, int p_number, bool p_known)
    {
        ++asked;
        if (!p_known) {
            unknown << QStringLiteral("%1 %2").arg(QLatin1String(p_what)).arg(p_number);
        }
    }
};

struct Expected {
    ChooserKind kind;
    int number;
    int named; /**< the same by its name */
    ChooserEntries::Kind shows;
    int count;
    const char* first;
    const char* last;
};

const Expected s_expected[] = {
    {ChooserKind::PopUp, 0, SpeedMode, ChooserEntries::Pictures, 3, ":/speed_slow.png",
     ":/speed_fast.png"},
    {ChooserKind::PopUp, 1, MotorPortMode, ChooserEntries::Words, 4, "A", "D"},
    {ChooserKind::PopUp, 2, InfraredMode, ChooserEntries::Pictures, 2, ":/infread_body.png",
     ":/infread_nobody.png"},
    {ChooserKind::PopUp, 3, SensorPortMode, ChooserEntries::Words, 5, "1", "5"},
    {ChooserKind::PopUp, 4, TouchMode, ChooserEntries::Pictures, 2, ":/until_touch_down_icon.png",
     ":/until_touch_up_icon.png"},
    {ChooserKind::PopUp, 5, SevenNumbersMode, ChooserEntries::Words, 7, "1", "7"},
    {ChooserKind::PopUp, 6, DisplayPortMode, ChooserEntries::Words, 2, "2", "3"},
    {ChooserKind::Panel, 1, NotesPanel, ChooserEntries::Words, 7, "do (1)", "si (7)"},
    {ChooserKind::Panel, 2, ServoIdsPanel, ChooserEntries::Words, 18, "ID-01", "ID-18"},
    {ChooserKind::Sounds, 1, GreetingSounds, ChooserEntries::Pictures, 5, ":/voice/1/1.png",
     ":/voice/1/5.png"},
    {ChooserKind::Sounds, 2, AnimalSounds, ChooserEntries::Pictures, 6, ":/voice/2/1.png",
     ":/voice/2/6.png"},
    {ChooserKind::Sounds, 3, TrafficSounds, ChooserEntries::Pictures, 2, ":/voice/3/1.png",
     ":/voice/3/2.png"},
    {ChooserKind::Sounds, 4, MoodSounds, ChooserEntries::Pictures, 4, ":/voice/4/1.png",
     ":/voice/4/4.png"},
    {ChooserKind::Symbols, 1, SignSymbols, ChooserEntries::Pictures, 13, ":/expression/1/0.png",
     ":/expression/1/12.png"},
    {ChooserKind::Symbols, 2, ArithmeticSymbols, ChooserEntries::Pictures, 5,
     ":/expression/2/0.png", ":/expression/2/4.png"},
    {ChooserKind::Symbols, 3, DigitSymbols, ChooserEntries::Pictures, 10, ":/expression/3/0.png",
     ":/expression/3/9.png"},
    {ChooserKind::Symbols, 4, LetterSymbols, ChooserEntries::Pictures, 26, ":/expression/4/0.png",
     ":/expression/4/25.png"},
    {ChooserKind::Symbols, 5, FaceSymbols, ChooserEntries::Pictures, 12, ":/expression/5/0.png",
     ":/expression/5/11.png"},
};
} // namespace

/** The choosers that blocks name, as one table. */
class ChooserTableTest : public QObject
{
    Q_OBJECT

private slots:
    void everyChooserHasItsNumberAndEntries_data()
    {
        QTest::addColumn<int>("index");
        int index = 0;
        for (const Expected& row : s_expected) {
            QTest::newRow(row.first) << index++;
        }
    }

    void everyChooserHasItsNumberAndEntries()
    {
        QFETCH(int, index);
        const Expected& expected = s_expected[index];
        QCOMPARE(expected.named, expected.number);
        const Chooser* found = findChooser(expected.kind, expected.number);
        QVERIFY(found);
        QCOMPARE(found->entries.kind, expected.shows);
        QCOMPARE(found->count(), expected.count);
        QCOMPARE(found->allEntries().size(), expected.count);
        QCOMPARE(found->allEntries().first(), QString::fromLatin1(expected.first));
        QCOMPARE(found->allEntries().last(), QString::fromLatin1(expected.last));
    }

    void thereAreNoOthers()
    {
        QCOMPARE(allChoosers(ChooserKind::PopUp).keys(), (QList<int>{0, 1, 2, 3, 4, 5, 6}));
        QCOMPARE(allChoosers(ChooserKind::Panel).keys(), (QList<int>{1, 2}));
        QCOMPARE(allChoosers(ChooserKind::Sounds).keys(), (QList<int>{1, 2, 3, 4}));
        QCOMPARE(allChoosers(ChooserKind::Symbols).keys(), (QList<int>{1, 2, 3, 4, 5}));
        QVERIFY(!findChooser(ChooserKind::PopUp, 7));
        QVERIFY(!findChooser(ChooserKind::PopUp, -1));
        QVERIFY(!findChooser(ChooserKind::Panel, 0));
    }

    void everyPictureIsThere_data() { everyChooserHasItsNumberAndEntries_data(); }

    void everyPictureIsThere()
    {
        QFETCH(int, index);
        const Chooser* found = findChooser(s_expected[index].kind, s_expected[index].number);
        QVERIFY(found);
        QStringList pictures{QString::fromLatin1(found->style.normalPicture),
                             QString::fromLatin1(found->style.pressedPicture)};
        if (found->popUp) {
            pictures << QString::fromLatin1(found->popUp->background);
        }
        if (found->entries.kind == ChooserEntries::Pictures) {
            pictures << found->allEntries();
        }
        QStringList missing;
        for (const QString& path : qAsConst(pictures)) {
            if (QPixmap(path).isNull()) {
                missing << path;
            }
        }
        QCOMPARE(missing.join(QLatin1Char(' ')), QString());
    }

    void onlyTheServosComeBackWithTheirParameter()
    {
        for (const Expected& row : s_expected) {
            const Chooser* found = findChooser(row.kind, row.number);
            QVERIFY(found);
            QCOMPARE(found->byParameter, row.kind == ChooserKind::Panel && row.number == 2);
        }
    }

    void thePopUpHasAFormAndAPanelHasNone()
    {
        for (const Expected& row : s_expected) {
            const Chooser* found = findChooser(row.kind, row.number);
            QVERIFY(found);
            QCOMPARE(found->popUp != nullptr, row.kind == ChooserKind::PopUp);
        }
    }

    void pastTheEndThereIsNoWordAndNoPicture()
    {
        QCOMPARE(chooserOf(MotorPortMode).entry(4), QString());
        QCOMPARE(chooserOf(MotorPortMode).entry(-1), QString());
        QCOMPARE(chooserOf(NotesPanel).entry(7), QString());
        QVERIFY(QPixmap(chooserOf(TrafficSounds).entry(2)).isNull());
        QVERIFY(QPixmap(chooserOf(FaceSymbols).entry(-1)).isNull());
        // What a servo's block shows of a number from a file.
        QCOMPARE(chooserOf(ServoIdsPanel).entry(98), QStringLiteral("ID-99"));
        QCOMPARE(chooserOf(ServoIdsPanel).entry(-6), QStringLiteral("ID--5"));
    }

    void everyChooserThatABlockNamesIsInTheTable_data()
    {
        QTest::addColumn<int>("id");
        for (const BlockRecord& record : blockRecords()) {
            QTest::newRow(qPrintable(QString::number(record.id))) << record.id;
        }
    }

    void everyChooserThatABlockNamesIsInTheTable()
    {
        QFETCH(int, id);
        RecordingHost host;
        QGraphicsScene scene;
        supermodule* block = createModuleFromId(id);
        scene.addItem(block);
        int pressed = 0;
        for (; QAbstractButton* button = block->button(pressed); ++pressed) {
            const int before = host.asked;
            if (graphicsItem_Param* popUp = graphicsItem_Param::existing()) {
                popUp->setVisible(false);
            }
            button->click();
            if (host.asked == before) {
                const graphicsItem_Param* popUp = graphicsItem_Param::existing();
                QVERIFY(popUp && popUp->isVisible());
                QVERIFY2(!popUp->buttons().isEmpty(), "the pop-up has nothing to choose from");
            }
        }
        QCOMPARE(host.unknown, QStringList());
        supermodule::deleteTree(block);
    }
};

QTEST_MAIN(ChooserTableTest)
#include "choosertabletest.moc"
