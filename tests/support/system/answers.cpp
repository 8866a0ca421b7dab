#include "support/system/answers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>

Answers::Answers(const QVariantList& p_answers) : m_answers(p_answers)
{
    // The dialogs of Qt itself: those of a desktop can't be answered from here.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    said().clear();
    m_timer.setInterval(20);
    connect(&m_timer, &QTimer::timeout, this, &Answers::answer);
    m_timer.start();
}

QStringList& Answers::said()
{
    static QStringList s_said;
    return s_said;
}

void Answers::answer()
{
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog || m_answers.isEmpty()) {
        return;
    }
    const QVariant next = m_answers.takeFirst();
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
        said() << box->windowTitle() + QLatin1Char('|') + box->text();
        if (next.toInt() == Closed) {
            box->close();
        } else {
            box->buttons().at(next.toInt())->click();
        }
    } else if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
        said() << files->windowTitle();
        if (next.toString().isEmpty()) {
            files->reject();
        } else {
            files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(next.toString());
            // Queued: accept() may ask whether to replace a file, and this timer doesn't recurse.
            QMetaObject::invokeMethod(files, "accept", Qt::QueuedConnection);
        }
    }
}
