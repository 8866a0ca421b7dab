#include "actions/editactionwindow.h"
#include "actions/model/actionblock.h"
#include "actions/model/servoangle.h"
#include "fuzztarget.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>

/*
 * The loader of the action image: a file's last bytes into the image, and the image back into a
 * file. An image is 57,472 bytes, too many to guess at one by one, so that an input tells a file
 * in few bytes: two for the file's size, from 32,768 less than an image to as many more, then
 * records of four, each a run in a file that else ends in a new image: offset (two bytes, little
 * endian), length, value.
 */

namespace
{
const int s_size = sizeof(ActionBlock);
const int s_halfRange = 32768;

struct Bench {
    Bench() : path(folder.filePath(QStringLiteral("project.tlrx")))
    {
        fuzzCheck(folder.isValid(), "there is no folder to work in");
    }
    QTemporaryDir folder;
    QString path;
    // Never deleted: it would outlive the application object. A pointer to it stays.
    editActionWindow* window = new editActionWindow;
};

Bench& bench()
{
    static Bench s_bench;
    return s_bench;
}

QByteArray bytesOf(const ActionBlock& p_image)
{
    return QByteArray(reinterpret_cast<const char*>(&p_image), s_size);
}

void write(const QString& p_path, const QByteArray& p_bytes)
{
    QFile file(p_path);
    fuzzCheck(file.open(QIODevice::WriteOnly) && file.write(p_bytes) == p_bytes.size(),
              "the file can't be written");
}

/** The file that an input stands for. */
QByteArray fileOf(const QByteArray& p_input)
{
    const auto number = [&p_input](int p_at) {
        return static_cast<uchar>(p_input.at(p_at)) +
               256 * static_cast<uchar>(p_input.at(p_at + 1));
    };
    const int size = p_input.size() < 2 ? s_size : number(0) - s_halfRange + s_size;
    QByteArray file(qMax(0, size - s_size), '<');
    file += bytesOf(builtActionBlock()).right(qMin(size, s_size));
    for (int at = 2; at + 4 <= p_input.size(); at += 4) {
        const int first = number(at);
        const int last = qMin(first + static_cast<uchar>(p_input.at(at + 2)), file.size());
        for (int i = first; i < last; ++i) {
            file[i] = p_input.at(at + 3);
        }
    }
    return file;
}

/** What is read out of an image; all of it must hold whatever the image does. */
void readImage(const ActionBlock& p_image)
{
    const char* bytes = reinterpret_cast<const char*>(&p_image);
    for (int page = 0; page < actionPageCount; ++page) {
        const QByteArray name = actionPageName(p_image, page);
        const size_t from = offsetof(ActionBlock, pages) + offsetof(ActionPage, name) +
                            static_cast<size_t>(page) * sizeof(ActionPage);
        const size_t length = strnlen(bytes + from, sizeof(p_image) - from);
        fuzzCheck(static_cast<size_t>(name.size()) == length &&
                      std::memcmp(name.constData(), bytes + from, length) == 0,
                  "a page's name isn't what stands up to the zero byte");
        for (const ActionStep& step : p_image.pages[page].steps) {
            for (const quint16 position : step.position) {
                const int back = angleToServoPosition(servoPositionToAngle(position));
                fuzzCheck(qAbs(back - position) <= 1, "a servo's position doesn't come back");
            }
        }
    }
}
} // namespace

int LLVMFuzzerInitialize(int* p_argc, char*** p_argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never deleted either.
    static const auto* const s_application = new QApplication(*p_argc, *p_argv);
    Q_UNUSED(s_application)
    bench();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    const QByteArray file =
        fileOf(QByteArray(reinterpret_cast<const char*>(p_data), static_cast<int>(p_size)));
    editActionWindow& window = *bench().window;
    const QString path = bench().path;

    window.resetActionBlock();
    window.setModified(true);
    write(path, file);
    window.loadActionBlock(path);

    ActionBlock reset = builtActionBlock();
    resetActionBlock(reset);
    QByteArray expected = bytesOf(reset);
    if (file.size() >= s_size) {
        const QByteArray tail = file.right(s_size);
        ActionBlock stored;
        std::memcpy(&stored, tail.constData(), s_size);
        if (stored.firstFormatMark == 0 && stored.secondFormatMark == 0) {
            expected = tail;
        }
        fuzzCheck(!window.modified(), "a loaded image counts as changed");
    } else {
        fuzzCheck(window.modified(), "a file without an image takes the changes away");
    }
    fuzzCheck(bytesOf(window.actionBlock()) == expected, "the image isn't the file's");
    readImage(window.actionBlock());

    // Out and in again.
    write(path, "<vantrel/>\n");
    window.appendActionBlock(path);
    QFile saved(path);
    fuzzCheck(saved.open(QIODevice::ReadOnly) && saved.readAll() == "<vantrel/>\n" + expected,
              "the image isn't appended as it stands");
    window.resetActionBlock();
    window.loadActionBlock(path);
    fuzzCheck(bytesOf(window.actionBlock()) == expected, "a saved image doesn't come back");
    return 0;
}
