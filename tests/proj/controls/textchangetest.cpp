#include "proj/controls/textchange.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>

namespace
{
QString randomText(QRandomGenerator& p_random)
{
    static const QString s_letters = QStringLiteral("ab\n{};车");
    QString text;
    for (int i = p_random.bounded(12); i > 0; --i) {
        text += s_letters.at(p_random.bounded(s_letters.size()));
    }
    return text;
}
} // namespace

class TextChangeTest : public QObject
{
    Q_OBJECT

private slots:
    void anyTextBecomesAnyOther()
    {
        QRandomGenerator random(20261);
        QTextDocument document;
        QString from;
        for (int turn = 0; turn < 5000; ++turn) {
            const QString to = randomText(random);
            changeText(document, from, to);
            QCOMPARE(document.toPlainText(), to);
            from = to;
        }
    }

    void whatIsTheSameStays()
    {
        QTextDocument document(QStringLiteral("int a;\nint b;\nint c;\n"));
        // A document without a layout reports no changes.
        document.documentLayout();
        QSignalSpy changes(&document, &QTextDocument::contentsChange);
        changeText(document, document.toPlainText(), QStringLiteral("int a;\nwait(1);\nint c;\n"));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.first(), (QList<QVariant>{7, 5, 7}));
        changeText(document, document.toPlainText(), document.toPlainText());
        QCOMPARE(document.toPlainText(), QStringLiteral("int a;\nwait(1);\nint c;\n"));
    }
};

QTEST_MAIN(TextChangeTest)
#include "textchangetest.moc"
