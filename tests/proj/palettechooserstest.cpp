#include "palettebench.h"
#include "support/system/datatable.h"

#include <QPushButton>
#include <QSignalSpy>

/** Brings up a chooser. */
using Show = void (*)(TzBlockWidget&);
Q_DECLARE_METATYPE(Show)

/** The choosers that the palette shows in place of the blocks. */
class PaletteChoosersTest : public FixtureTest<PaletteBench>
{
    Q_OBJECT

private slots:
    void aChooserTakesThePlaceOfTheBlocks()
    {
        const QPointer<PanelBase> strip = m_bench->palette->panel();
        m_bench->palette->OnShowVoiceSignal(2);
        QVERIFY(m_bench->palette->isChoosing());
        QCOMPARE(m_bench->chooser().buttons().size(), 6);
        QVERIFY(m_bench->chooser().isVisible());
        m_bench->palette->OnShowExpressionSignal(4);
        QCOMPARE(m_bench->chooser().buttons().size(), 26);
        QCOMPARE(m_bench->area().widget(), m_bench->palette->panel());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!strip);
        QCOMPARE(m_bench->palette->findChildren<PanelBase*>().size(), 1);
    }

    void aPressOnTheEmptyCanvasBringsTheBlocksBack()
    {
        QTest::mouseClick(&m_bench->tab(1), Qt::LeftButton);
        m_bench->palette->OnShowVoiceSignal(1);
        m_bench->palette->OnProgramMouse(6);
        QVERIFY(!m_bench->palette->isChoosing());
        QCOMPARE(m_bench->blocks(), blocksOfCategory(SoundCategory));
    }

    void aPressOnTheEmptyCanvasLeavesBlocksAlone()
    {
        const PanelBase* strip = m_bench->palette->panel();
        m_bench->palette->OnProgramMouse(6);
        QCOMPARE(m_bench->palette->panel(), strip);
    }

    void aChangeOfTabBringsTheBlocksBack()
    {
        m_bench->palette->OnShowNumKeyboardSignal(9);
        QTest::mouseClick(&m_bench->tab(3), Qt::LeftButton);
        QVERIFY(!m_bench->palette->isChoosing());
        QCOMPARE(m_bench->blocks(), blocksOfCategory(ControlCategory));
    }

    void theGroundTellsAChooserFromBlocks()
    {
        QTest::mouseClick(&m_bench->tab(1), Qt::LeftButton);
        QCOMPARE(m_bench->ground(), blocksGround);
        m_bench->palette->OnShowVoiceSignal(3);
        QCOMPARE(m_bench->ground(), chooserGround);
        m_bench->palette->OnProgramMouse(6);
        QCOMPARE(m_bench->ground(), blocksGround);
    }

    void aWideChooserBringsUpTheHorizontalBar()
    {
        m_bench->palette->OnShowVoiceSignal(3);
        QCoreApplication::processEvents();
        QVERIFY(m_bench->palette->panel()->width() < m_bench->area().width());
        QVERIFY(!m_bench->bar().isVisible());
        m_bench->palette->OnShowExpressionSignal(4);
        QCoreApplication::processEvents();
        QVERIFY(m_bench->palette->panel()->width() > m_bench->area().width());
        QVERIFY(m_bench->bar().isVisible());
        QCOMPARE(m_bench->bar().maximum(),
                 m_bench->palette->panel()->width() - m_bench->area().width());
        // The bar takes the room that the chooser leaves, so nothing has to scroll up and down.
        QVERIFY(!m_bench->area().verticalScrollBar()->isVisible());
    }

    void aChoosersButtonsHaveItsPictures_data()
    {
        columns<Show, QString, QString, QString, int>("show", "normal", "pressed", "end", "pixels");
        const QString expression = QStringLiteral(":/expression/expression_bg_%1_60x60.png");
        const QString semicolon(QLatin1Char(';'));
        const auto row = [](const char* p_name, Show p_show, const QString& p_pattern,
                            const QString& p_end, int p_pixels) {
            QTest::newRow(p_name) << p_show << p_pattern.arg(QStringLiteral("nol"))
                                  << p_pattern.arg(QStringLiteral("pre")) << p_end << p_pixels;
        };
        row(
            "keyboard", [](TzBlockWidget& p) { p.OnShowNumKeyboardSignal(15); },
            QStringLiteral(":/number_%1_120x60.png"), QString(), 24);
        // The blank in these names is theirs.
        row(
            "voices", [](TzBlockWidget& p) { p.OnShowVoiceSignal(4); },
            QStringLiteral(":/voice/voice_bg_%1_60x60 .png"), semicolon, 0);
        row(
            "expressions", [](TzBlockWidget& p) { p.OnShowExpressionSignal(5); }, expression,
            semicolon, 0);
        row(
            "notes", [](TzBlockWidget& p) { p.onShowPanelSignal(1, 0); }, expression, semicolon, 0);
        row(
            "servos", [](TzBlockWidget& p) { p.onShowPanelSignal(2, 0); },
            QStringLiteral(":/move/servo_id_%1_60x60.png"), semicolon, 0);
    }

    void aChoosersButtonsHaveItsPictures()
    {
        QFETCH(Show, show);
        QFETCH(QString, normal);
        QFETCH(QString, pressed);
        QFETCH(QString, end);
        QFETCH(int, pixels);
        show(*m_bench->palette);
        QVERIFY(m_bench->chooser().buttons().size() > 3);
        for (const QPushButton* button : m_bench->chooser().buttons()) {
            QCOMPARE(
                button->styleSheet(),
                QStringLiteral("QPushButton{border-image:url(%1);background-color:transparent%3}"
                               "QPushButton:pressed{border-image:url(%2);"
                               "background-color:transparent%3}")
                    .arg(normal, pressed, end));
            QVERIFY(button->isVisible());
            QVERIFY(button->testAttribute(Qt::WA_DeleteOnClose));
            if (pixels > 0) {
                QCOMPARE(button->font().pixelSize(), pixels);
            }
        }
    }

    void aChooserFillsTheStripsHeight()
    {
        const int before = m_bench->area().viewport()->height();
        m_bench->palette->OnShowVoiceSignal(1);
        QCOMPARE(m_bench->palette->panel()->height(), before - 16);
        m_bench->palette->OnShowNumKeyboardSignal(8);
        QCOMPARE(m_bench->palette->panel()->height(), before - 16);
    }

    void aChooserStaysAfterAChoice()
    {
        m_bench->palette->OnShowNumKeyboardSignal(9);
        const PanelBase* keyboard = m_bench->palette->panel();
        QSignalSpy reported(m_bench->palette, &TzBlockWidget::SelectNumberSignal);
        QTest::mouseClick(m_bench->chooser().buttons().at(7), Qt::LeftButton);
        QTest::mouseClick(m_bench->chooser().buttons().at(10), Qt::LeftButton);
        QCOMPARE(reported.count(), 2);
        QCOMPARE(reported.at(0).first().toInt(), 55);
        QCOMPARE(reported.at(1).first().toInt(), 0x1000003);
        QCOMPARE(m_bench->palette->panel(), keyboard);
        QVERIFY(m_bench->palette->isChoosing());
    }

    void notesReportTheirPlace()
    {
        m_bench->palette->onShowPanelSignal(1, 5);
        QStringList texts;
        for (const QPushButton* button : m_bench->chooser().buttons()) {
            texts.append(button->text());
        }
        QCOMPARE(texts.join(QLatin1Char(',')),
                 QStringLiteral("do (1),re (2),mi (3),fa (4),so (5),la (6),si (7)"));
        QSignalSpy reported(m_bench->palette, &TzBlockWidget::SelectNumberSignal);
        const QSignalSpy edited(m_bench->palette, &TzBlockWidget::editParamSignal);
        QTest::mouseClick(m_bench->chooser().buttons().at(3), Qt::LeftButton);
        QCOMPARE(reported.count(), 1);
        QCOMPARE(reported.at(0).first().toInt(), 3);
        QCOMPARE(edited.count(), 0);
    }

    void aServoIdComesBackWithItsParameter()
    {
        m_bench->palette->onShowPanelSignal(2, 77);
        QCOMPARE(m_bench->chooser().buttons().size(), 18);
        QCOMPARE(m_bench->chooser().buttons().first()->text(), QStringLiteral("ID-01"));
        QCOMPARE(m_bench->chooser().buttons().last()->text(), QStringLiteral("ID-18"));
        const QSignalSpy reported(m_bench->palette, &TzBlockWidget::SelectNumberSignal);
        const QSignalSpy edited(m_bench->palette, &TzBlockWidget::editParamSignal);
        QTest::mouseClick(m_bench->chooser().buttons().at(4), Qt::LeftButton);
        QCOMPARE(reported.count(), 0);
        QCOMPARE(edited.count(), 1);
        QCOMPARE(edited.at(0), QList<QVariant>({77, 4}));
    }

    void anUnknownChooserLeavesTheStripEmpty()
    {
        m_bench->palette->onShowPanelSignal(9, 0);
        QVERIFY(m_bench->palette->isChoosing());
        QVERIFY(!m_bench->palette->panel());
        QVERIFY(!m_bench->area().widget());
        // Neither a resize nor the next chooser minds.
        m_bench->palette->setMaximumHeight(120);
        QCoreApplication::processEvents();
        m_bench->palette->OnShowVoiceSignal(1);
        QCOMPARE(m_bench->chooser().buttons().size(), 5);
    }

    void anUnknownMapGivesAnEmptyChooser()
    {
        m_bench->palette->OnShowVoiceSignal(99);
        QVERIFY(m_bench->chooser().buttons().isEmpty());
        m_bench->palette->OnShowExpressionSignal(0);
        QVERIFY(m_bench->chooser().buttons().isEmpty());
        QVERIFY(m_bench->palette->isChoosing());
    }

    void aButtonMayEndTheChooserItIsIn()
    {
        m_bench->palette->OnShowVoiceSignal(1);
        QPointer<QPushButton> pressed = m_bench->chooser().buttons().at(0);
        bool aliveDuringTheClick = false;
        connect(m_bench->palette, &TzBlockWidget::SelectNumberSignal, m_bench->palette,
                [this, &pressed, &aliveDuringTheClick] {
                    m_bench->palette->OnProgramMouse(6);
                    aliveDuringTheClick = !pressed.isNull();
                });
        QTest::mouseClick(pressed, Qt::LeftButton);
        QVERIFY(aliveDuringTheClick);
        QCOMPARE(m_bench->blocks(), blocksOfCategory(0));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!pressed);
    }
};

QTEST_MAIN(PaletteChoosersTest)
#include "palettechooserstest.moc"
