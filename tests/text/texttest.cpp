#include "proj/controls/variablepictures.h"
#include "text/bracestoindent.h"
#include "text/variables.h"

#include <QCoreApplication>
#include <QFile>
#include <QTranslator>
#include <QtTest>

namespace
{
/** The kinds as they are laid down, with the English of their captions. */
struct KindRow {
    uint32_t key;
    const char* prefix;
    const char* english;
    const char* pictureStem;
    int valueType;
};

const KindRow s_kinds[] = {
    {0x1, "gi_", "Integer", "zhengxingbianliang", 0},
    {0x2, "gf_", "Float", "fudianbianliang", 1},
    {0x4, "ana_", "Simulation", "monibianliang", 0},
    {0x8, "math_", "Digital Input", "shuzishurubianliang", 0},
    {0x10, "eeprom_", "EEPROM", "EEPROMbianliang", 0},
    {0x20000, "image_", "Image", "tuxiangshibei", 0},
    {0x40000, "voice_", "Voice", "yuyinshibiebianliang", 0},
    {0x1000000, "ctrl_", "telecontroller", "controlbianliang", 0},
    {0x800000, "angle_", "Steering Angle", "duojijiaodubianliang", 0},
    {0x20, "button_", "Button", "anniubianliang", 0},
    {0x40, "light_", "Light", "liangdubianliang", 0},
    {0x80, "temper_", "Temperature", "wendubianliang", 0},
    {0x100, "mag_", "Magnetic Sensitivity", "ciminbianliang", 0},
    {0x200, "swi_", "Switch", "kaiguanbianliang", 0},
    {0x400, "gray_", "gray", "huidubianliang", 0},
    {0x800, "flame_", "Flame", "huoyanbianliang", 0},
    {0x1000, "sound_", "Microphone", "shengyinbianliang", 0},
    {0x2000, "time_", "Timer", "shijianbianliang", 1},
    {0x10000, "infra_", "Infrared", "hongwaicejubianliang", 0},
    {0x80000, "gray5_", "5 gray", "5gray bianliang", 0},
    {0x100000, "pot_", "Potentiometer", "dianweiqbianliang", 0},
    {0x200000, "ult_", "Ultrasonic", "ultrasonicbianliang", 0},
    {0x400000, "hum_", "humidity", "shidubianliang", 0},
    {0x4000, "logic_", "logic", "luojibianliang", 0},
    {0x8000, "ran_", "random", "suijishubianliang", 0},
    {0x2000000, "param_", "parameter", "canshubianliang", 1},
};
const int s_kindCount = 26;
const uint32_t s_parameterKey = 0x2000000;
} // namespace

class TextTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_english.load(QStringLiteral(":/vantrel_en.qm")));
        // The table is built at its first use, with the translator in force then.
        QVERIFY(QCoreApplication::installTranslator(&m_english));
    }

    void init() { resetVariableUse(); }

    void theTableHoldsTheKindsInTheirOrder_data()
    {
        QTest::addColumn<int>("row");
        for (int i = 0; i < s_kindCount; ++i) {
            QTest::newRow(s_kinds[i].prefix) << i;
        }
    }

    void theTableHoldsTheKindsInTheirOrder()
    {
        QFETCH(int, row);
        QCOMPARE(variableKinds().size(), s_kindCount);
        const VariableKind& kind = variableKinds().at(row);
        const KindRow& expected = s_kinds[row];
        QCOMPARE(kind.key, expected.key);
        QCOMPARE(kind.prefix, QString::fromLatin1(expected.prefix));
        QCOMPARE(kind.caption, QString::fromLatin1(expected.english));
        QCOMPARE(kind.valueType, expected.valueType);
        const QString stem = QString::fromLatin1(expected.pictureStem);
        const VariablePictures pictures = variablePictures(expected.key);
        QCOMPARE(pictures.normal, ":/" + stem + "-nol.png");
        QCOMPARE(pictures.pressed, ":/" + stem + "-pre.png");
        QVERIFY2(QFile::exists(pictures.normal), qPrintable(pictures.normal));
        QVERIFY2(QFile::exists(pictures.pressed), qPrintable(pictures.pressed));
        QCOMPARE(variableTypeName(expected.key),
                 expected.valueType == 1 ? QStringLiteral("float") : QStringLiteral("int"));
    }

    void aNameIsThePrefixAndTheNumberFromOne_data()
    {
        QTest::addColumn<uint>("key");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("name");
        for (const KindRow& kind : s_kinds) {
            for (const int index : {0, 4, 9}) {
                const QString name = QString::fromLatin1(kind.prefix) + QString::number(index + 1);
                QTest::newRow(qPrintable(name)) << kind.key << index << name;
            }
        }
    }

    void aNameIsThePrefixAndTheNumberFromOne()
    {
        QFETCH(uint, key);
        QFETCH(int, index);
        QFETCH(QString, name);
        QCOMPARE(variableName(key, index), name);
    }

    void aNameCountsOneUseOfThatVariableAlone()
    {
        variableName(0x20, 3);
        variableName(0x20, 3);
        variableName(0x40, 0);
        for (const KindRow& kind : s_kinds) {
            for (int i = 0; i < 10; ++i) {
                const int uses = kind.key == 0x20 && i == 3   ? 2
                                 : kind.key == 0x40 && i == 0 ? 1
                                                              : 0;
                QCOMPARE(variableUse.value(kind.key).at(i), uses);
            }
        }
    }

    void theParameterKindIsNamedButNotCounted()
    {
        QCOMPARE(variableName(s_parameterKey, 1), QStringLiteral("param_2"));
        QCOMPARE(variableUse.value(s_parameterKey), QVector<int>(10, 0));
    }

    void anUnknownKindHasNoTypeAndNoCounter()
    {
        for (const uint32_t key : {0U, 0x3U, 0x4000000U}) {
            QCOMPARE(variableTypeName(key), QString());
            QCOMPARE(variableName(key, 6), QStringLiteral("7"));
            QVERIFY(!variableUse.contains(key));
        }
    }

    void anIndexBeyondTheCountersIsNamedButNotCounted()
    {
        QCOMPARE(variableName(0x1, 10), QStringLiteral("gi_11"));
        QCOMPARE(variableName(0x1, -1), QStringLiteral("gi_0"));
        QCOMPARE(variableUse.value(0x1), QVector<int>(10, 0));
    }

    void aResetGivesEveryKindTenZeros()
    {
        variableUse.clear();
        variableUse.insert(0x4000000, {1});
        variableUse.insert(0x1, {5, 5});
        resetVariableUse();
        QCOMPARE(variableUse.size(), s_kindCount);
        for (const KindRow& kind : s_kinds) {
            QCOMPARE(variableUse.value(kind.key), QVector<int>(10, 0));
        }
    }

    void nothingUsedDeclaresNothing() { QCOMPARE(variableDeclarations(), QString()); }

    void aVariableNamedTwiceIsDeclaredOnce()
    {
        variableName(0x1, 0);
        variableName(0x1, 0);
        QCOMPARE(variableDeclarations(), QStringLiteral("int gi_1 = 0;\n"));
    }

    void declarationsStandByAscendingKeyAndNumber()
    {
        // In the table "image_" stands before "button_", by key behind it.
        variableName(0x20000, 0);
        variableName(0x20, 9);
        variableName(0x20, 1);
        variableName(0x2000, 2);
        variableName(0x2, 0);
        variableName(0x1000000, 4);
        QCOMPARE(variableDeclarations(), QStringLiteral("float gf_1 = 0;\n"
                                                        "int button_2 = 0;\n"
                                                        "int button_10 = 0;\n"
                                                        "float time_3 = 0;\n"
                                                        "int image_1 = 0;\n"
                                                        "int ctrl_5 = 0;\n"));
    }

    void theParameterKindIsNeverDeclared()
    {
        variableName(s_parameterKey, 0);
        QCOMPARE(variableDeclarations(), QString());
    }

    void declaringCountsAsAUse()
    {
        variableName(0x4, 2);
        variableDeclarations();
        QCOMPARE(variableUse.value(0x4).at(2), 2);
        QCOMPARE(variableUse.value(0x4).at(1), 0);
    }

    void textIsIndentedByItsBraces_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("laidOut");
        const auto row = [](const char* p_name, const char* p_text, const char* p_laidOut) {
            QTest::newRow(p_name) << p_text << p_laidOut;
        };
        row("nothing", "", "");
        row("only line feeds", "\n\n\n", "");
        row("a last line feed is added", "a", "a\n");
        row("blank lines go", "\na\n\n\nb\n\n", "a\nb\n");
        row("a line of blanks isn't empty", "a\n  \nb", "a\n  \nb\n");
        row("six blanks a brace", "f()\n{\na\n{\nb\n}\nc\n}\nd",
            "f()\n{\n      a\n      {\n            b\n      }\n"
            "      c\n}\nd\n");
        row("a closing brace behind a statement goes out with its line", "w\n{\nx;}\ny",
            "w\n{\nx;}\ny\n");
        row("a closing brace before a statement, too", "u\n{\nw\n{\n}x;\ny",
            "u\n{\n      w\n      {\n      }x;\n      y\n");
        row("several braces of a line count once", "a{{\nb\n}}\nc", "a{{\n      b\n}}\nc\n");
        row("both in a line stand one out and change nothing", "a\n{\n{0x0}\nb\n}",
            "a\n{\n{0x0}\n      b\n}\n");
        row("both in a line, the closing one first", "a\n{\n}else{\nb\n}",
            "a\n{\n}else{\n      b\n}\n");
        row("below zero nothing is indented", "}\n}\na\n{\nb\n{\nc\n{\nd",
            "}\n}\na\n{\nb\n{\nc\n{\n      d\n");
        row("nor is it behind what was deep", "{\n{\na\n}\n}\n}\nb\n{\nc",
            "{\n      {\n            a\n      }\n"
            "}\n}\nb\n{\nc\n");
        row("a brace in a string literal changes the depth of all lines after it",
            "f()\n{\nPrintf(\"{\");\na\n}\nb",
            "f()\n{\n      Printf(\"{\");\n            a\n      }\n      b\n");
        row("blanks of its own stay", "a\n{\n   b\n}", "a\n{\n         b\n}\n");
    }

    void textIsIndentedByItsBraces()
    {
        QFETCH(QString, text);
        QFETCH(QString, laidOut);
        bracesToIndent(text);
        QCOMPARE(text, laidOut);
    }

    void layingOutTwiceIndentsTwice()
    {
        // The pass doesn't take away what indentation there is.
        QString text = QStringLiteral("{\na\n}\n");
        bracesToIndent(text);
        bracesToIndent(text);
        QCOMPARE(text, QStringLiteral("{\n            a\n}\n"));
    }

private:
    QTranslator m_english;
};

QTEST_GUILESS_MAIN(TextTest)
#include "texttest.moc"
