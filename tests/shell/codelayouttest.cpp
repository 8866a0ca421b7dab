#include "shell/codelayout.h"
#include "support/system/datatable.h"

#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

/** The layout of the code pane, in a real browser. */
class CodeLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_browser = std::make_unique<QTextBrowser>();
        m_browser->setFont(QFont(QStringLiteral("monospace"), 10));
        m_browser->setLineWrapMode(QTextEdit::NoWrap);
        m_browser->setFrameShape(QFrame::NoFrame);
        m_browser->document()->setDocumentLayout(new CodeLayout(m_browser->document()));
        m_browser->resize(300, 200);
        QString text;
        for (int i = 0; i < 100; ++i) {
            text += QStringLiteral("line %1;\n").arg(i);
        }
        m_browser->setPlainText(text);
        m_browser->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_browser.get()));
    }
    void cleanup() { m_browser.reset(); }

    void linesStandOneBelowTheOther()
    {
        const int height = cursorRect(1).top() - cursorRect(0).top();
        QVERIFY(height > 8);
        for (int line = 2; line < 5; ++line) {
            QCOMPARE(cursorRect(line).top() - cursorRect(0).top(), line * height);
            QVERIFY(rowsWithInk().contains(cursorRect(line).center().y()));
        }
        // No line is there that isn't, and between two of them is no ink that belongs to none.
        bar().setValue(bar().maximum());
        QVERIFY(m_browser->viewport()->rect().contains(cursorRect(99)));
        QVERIFY(!rowsWithInk().contains(cursorRect(100).center().y()));
    }

    void aPointIsTheLetterThatIsThere()
    {
        for (const int line : {0, 3, 7}) {
            QTextCursor cursor(block(line));
            cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 3);
            const QPoint at = m_browser->cursorRect(cursor).center();
            QCOMPARE(m_browser->cursorForPosition(at).position(), cursor.position());
        }
        const QTextCursor behind =
            m_browser->cursorForPosition(QPoint(280, cursorRect(2).center().y()));
        QCOMPARE(behind.position(), block(2).position() + block(2).length() - 1);
        bar().setValue(bar().maximum());
        QCOMPARE(m_browser->cursorForPosition(QPoint(2, 199)).position(),
                 m_browser->document()->characterCount() - 1);
    }

    void whatIsLitIsSeen()
    {
        QTextEdit::ExtraSelection selection;
        selection.format.setBackground(QColor(255, 0, 255));
        selection.cursor = QTextCursor(block(2));
        selection.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        m_browser->setExtraSelections({selection});
        const QImage shown = m_browser->viewport()->grab().toImage();
        const auto isLit = [&](int p_line) {
            const QRect at = cursorRect(p_line);
            return shown.pixelColor(at.left() + 1, at.top() + 1) == QColor(255, 0, 255);
        };
        QVERIFY(isLit(2));
        QVERIFY(!isLit(1) && !isLit(3));
    }

    void whatIsLitLosesNoLetter_data() { numberRows("pixels", {12, 13, 14, 15, 16}); }

    void whatIsLitLosesNoLetter()
    {
        QFETCH(int, pixels);
        QFont font(QStringLiteral("monospace"));
        font.setPixelSize(pixels);
        m_browser->setFont(font);
        m_browser->setPlainText(QStringLiteral("_g(p);\n_g(p);\n_g(p);"));
        const auto ink = [&] {
            const QImage shown = m_browser->viewport()->grab().toImage();
            int dark = 0;
            for (int y = 0; y < shown.height(); ++y) {
                for (int x = 0; x < shown.width(); ++x) {
                    dark += shown.pixelColor(x, y).lightness() < 80 ? 1 : 0;
                }
            }
            return dark;
        };
        const int before = ink();
        QVERIFY(before > 60);
        QTextEdit::ExtraSelection all;
        // The ground's own colour: the letters are to stay as they are.
        all.format.setBackground(Qt::white);
        all.cursor = QTextCursor(m_browser->document());
        all.cursor.select(QTextCursor::Document);
        m_browser->setExtraSelections({all});
        QCOMPARE(ink(), before);
    }

    void anEditIsSeenAndPaintsNoMoreThanItChanges()
    {
        QList<QRectF> updates;
        connect(m_browser->document()->documentLayout(), &QAbstractTextDocumentLayout::update, this,
                [&](const QRectF& p_rect) { updates.append(p_rect); });
        const qreal height = cursorRect(1).top() - cursorRect(0).top();
        const QImage before = m_browser->viewport()->grab().toImage();
        QTextCursor cursor(block(3));
        cursor.insertText(QStringLiteral("WWWW"));
        QVERIFY(!updates.isEmpty());
        for (const QRectF& rect : qAsConst(updates)) {
            QVERIFY(rect.top() >= 3 * height && rect.bottom() <= 6 * height);
        }
        const QImage after = m_browser->viewport()->grab().toImage();
        QVERIFY(before != after);
        QCOMPARE(m_browser->cursorForPosition(cursorRect(3).center()).block().text(),
                 QStringLiteral("WWWWline 3;"));
        // A new line moves all below it and nothing above.
        updates.clear();
        cursor.insertText(QStringLiteral("\n"));
        QVERIFY(!updates.isEmpty());
        for (const QRectF& rect : qAsConst(updates)) {
            QVERIFY(rect.top() >= 3 * height && rect.bottom() > 100 * height);
        }
    }

    void anotherFontLaysAllOutAnew()
    {
        const QRect before = behind(3);
        m_browser->setFont(QFont(QStringLiteral("monospace"), 20));
        QVERIFY(behind(3).left() > before.left() * 3 / 2);
        QVERIFY(behind(3).top() > before.top() * 3 / 2);
    }

    void theBarsReachTheEndsOfTheText()
    {
        const int lines = bar().maximum();
        QVERIFY(lines > 0);
        QCOMPARE(m_browser->horizontalScrollBar()->maximum(), 0);
        QTextCursor cursor(block(50));
        cursor.insertText(QString(200, QLatin1Char('x')) + QStringLiteral("\n\n\n"));
        QVERIFY(bar().maximum() > lines);
        QVERIFY(m_browser->horizontalScrollBar()->maximum() > 500);
        cursor.setPosition(block(50).position(), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        QCOMPARE(bar().maximum(), lines);
        QCOMPARE(m_browser->horizontalScrollBar()->maximum(), 0);
    }

private:
    QScrollBar& bar() { return *m_browser->verticalScrollBar(); }
    QTextBlock block(int p_line) { return m_browser->document()->findBlockByNumber(p_line); }
    QRect cursorRect(int p_line) { return m_browser->cursorRect(QTextCursor(block(p_line))); }
    QRect behind(int p_line)
    {
        QTextCursor cursor(block(p_line));
        cursor.movePosition(QTextCursor::EndOfBlock);
        return m_browser->cursorRect(cursor);
    }
    /** The rows of the viewport where something is written. */
    QSet<int> rowsWithInk()
    {
        const QImage shown = m_browser->viewport()->grab().toImage();
        QSet<int> rows;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (shown.pixelColor(x, y).lightness() < 128) {
                    rows.insert(y);
                }
            }
        }
        return rows;
    }

    std::unique_ptr<QTextBrowser> m_browser;
};

QTEST_MAIN(CodeLayoutTest)
#include "codelayouttest.moc"
