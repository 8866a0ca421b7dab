#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QUrl>

#include <cstdio>

namespace
{

void writeReport(const QString& p_path, const QByteArray& p_content)
{
    QFile file(p_path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(p_content);
    }
}

/** A window of another program that a file can be dragged out of. */
class FileSource : public QLabel
{
public:
    FileSource(const QString& p_path, const QString& p_report)
        : QLabel(QFileInfo(p_path).fileName()), m_path(p_path), m_report(p_report)
    {
        setWindowFlags(Qt::X11BypassWindowManagerHint | Qt::WindowStaysOnTopHint);
        setWindowTitle(QStringLiteral("elsewhere"));
        setAlignment(Qt::AlignCenter);
        setStyleSheet(QStringLiteral("background:#ffffc0;border:1px solid black"));
    }

protected:
    void mousePressEvent(QMouseEvent*) override {}

    void mouseMoveEvent(QMouseEvent* p_event) override
    {
        if (p_event->buttons() != Qt::LeftButton) {
            return;
        }
        auto* content = new QMimeData;
        content->setUrls({QUrl::fromLocalFile(m_path)});
        auto* drag = new QDrag(this);
        drag->setMimeData(content);
        connect(drag, &QDrag::actionChanged, this, [this](Qt::DropAction p_action) {
            report(p_action == Qt::IgnoreAction ? "refused" : "wanted");
        });
        report("dragging");
        drag->exec(Qt::CopyAction);
        report("dropped");
    }

private:
    // The last word is what counts.
    void report(const char* p_word) const { writeReport(m_report, p_word); }

    QString m_path;
    QString m_report;
};

int usage()
{
    std::fputs("helper offer <file> <x> <y> <width> <height> <report>\n"
               "    a window from which the file can be dragged; the report says how far it is\n"
               "helper edit <report>\n"
               "    a window to write text in; the report holds what stands in it\n"
               "helper hold <format> <file> <report>\n"
               "    puts the file's content on the clipboard and stays; the report says so\n"
               "helper formats\n"
               "    lists what the clipboard holds\n"
               "helper get <format>\n"
               "    prints it\n"
               "helper same <picture> <x> <y> <width> <height> <picture> <x> <y>\n"
               "    ends with 0 if the two pieces are the same\n"
               "helper bounds <picture> <x> <y> <width> <height> <colour>\n"
               "    left, top, width and height of what has the colour in the piece\n",
               stderr);
    return 2;
}

int offer(int& p_count, char** p_arguments)
{
    const QApplication application(p_count, p_arguments);
    const QStringList words = QCoreApplication::arguments();
    FileSource source(words[2], words[7]);
    source.setGeometry(words[3].toInt(), words[4].toInt(), words[5].toInt(), words[6].toInt());
    source.show();
    return QApplication::exec();
}

int edit(int& p_count, char** p_arguments)
{
    const QApplication application(p_count, p_arguments);
    const QString report = QCoreApplication::arguments().at(2);
    QPlainTextEdit editor;
    editor.setWindowTitle(QStringLiteral("editor"));
    QObject::connect(&editor, &QPlainTextEdit::textChanged,
                     [&] { writeReport(report, editor.toPlainText().toUtf8()); });
    editor.resize(600, 200);
    editor.show();
    return QApplication::exec();
}

int hold(int& p_count, char** p_arguments)
{
    const QApplication application(p_count, p_arguments);
    const QStringList words = QCoreApplication::arguments();
    QFile file(words.at(3));
    if (!file.open(QIODevice::ReadOnly)) {
        return 1;
    }
    auto* content = new QMimeData;
    content->setData(words.at(2), file.readAll());
    QGuiApplication::clipboard()->setMimeData(content);
    writeReport(words.at(4), "holding");
    return QApplication::exec();
}

/** What the clipboard holds in a format; for an empty one, which formats that is, a line each. */
int printClipboard(int& p_count, char** p_arguments, const QString& p_format)
{
    const QApplication application(p_count, p_arguments);
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    if (!content || (!p_format.isEmpty() && !content->hasFormat(p_format))) {
        return 1;
    }
    const QByteArray text = p_format.isEmpty()
                                ? content->formats().join(QLatin1Char('\n')).toUtf8() + '\n'
                                : content->data(p_format);
    std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
    return 0;
}

/** A piece of a picture; a null image if it isn't wholly in the picture. */
QImage piece(const QString& p_path, const QString& p_left, const QString& p_top,
             const QString& p_width, const QString& p_height)
{
    const QImage picture = QImage(p_path).convertToFormat(QImage::Format_RGB32);
    const QRect rect(p_left.toInt(), p_top.toInt(), p_width.toInt(), p_height.toInt());
    return picture.rect().contains(rect) ? picture.copy(rect) : QImage();
}

int same(const QStringList& p_words)
{
    const QImage first = piece(p_words[2], p_words[3], p_words[4], p_words[5], p_words[6]);
    const QImage second = piece(p_words[7], p_words[8], p_words[9], p_words[5], p_words[6]);
    return !first.isNull() && first == second ? 0 : 1;
}

int bounds(const QStringList& p_words)
{
    const QImage image = piece(p_words[2], p_words[3], p_words[4], p_words[5], p_words[6]);
    const QColor colour(p_words[7]);
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == colour) {
                found |= QRect(x, y, 1, 1);
            }
        }
    }
    found.translate(p_words[3].toInt(), p_words[4].toInt());
    std::printf("%d %d %d %d\n", found.x(), found.y(), found.width(), found.height());
    return found.isEmpty() ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    const QString what = words.value(1);
    if (what == QLatin1String("offer") && argc == 8) {
        return offer(argc, argv);
    }
    if (what == QLatin1String("edit") && argc == 3) {
        return edit(argc, argv);
    }
    if (what == QLatin1String("hold") && argc == 5) {
        return hold(argc, argv);
    }
    if (what == QLatin1String("formats") && argc == 2) {
        return printClipboard(argc, argv, QString());
    }
    if (what == QLatin1String("get") && argc == 3) {
        return printClipboard(argc, argv, words.at(2));
    }
    if (what == QLatin1String("same") && argc == 10) {
        return same(words);
    }
    if (what == QLatin1String("bounds") && argc == 8) {
        return bounds(words);
    }
    return usage();
}
