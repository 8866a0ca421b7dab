#include "actions/model/actionimage.h"
#include "actions/model/servoangle.h"
#include "fuzztarget.h"

#include <QFile>
#include <QTemporaryDir>

/*
 * The loader of the action image: a file's last bytes into the image, and the image back into a
 * file. An image is 57,472 bytes, too many to guess at one by one, so that an input tells a file
 * in few bytes: two for the file's size, from 32,768 less than an image to as many more, then
 * records of four, each a run in a file that else ends in a new image: offset (two bytes, little
 * endian), length, value.
 */

namespace
{
const int s_size = ActionImage::Size;
const int s_halfRange = 32768;

struct Bench {
    Bench() : path(folder.filePath(QStringLiteral("project.tlrx")))
    {
        fuzzCheck(folder.isValid(), "there is no folder to work in");
    }
    QTemporaryDir folder;
    QString path;
    ActionImage image;
};

Bench& bench()
{
    static Bench s_bench;
    return s_bench;
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
    file += ActionImage().bytes().right(qMin(size, s_size));
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
void readImage(const ActionImage& p_image)
{
    const QByteArray bytes = p_image.bytes();
    for (int page = 0; page < actionPageCount; ++page) {
        const QByteArray name = p_image.pageName(page);
        const int from = 40 + 448 * page + 422;
        const int zero = bytes.indexOf('\0', from);
        fuzzCheck(name == bytes.mid(from, zero < 0 ? -1 : zero - from),
                  "a page's name isn't what stands up to the zero byte");
        for (int step = 0; step < actionStepCount; ++step) {
            for (const quint16 position : p_image.step(page, step)->position) {
                const int back = angleToServoPosition(servoPositionToAngle(position));
                fuzzCheck(qAbs(back - position) <= 1, "a servo's position doesn't come back");
            }
        }
    }
}
} // namespace

int LLVMFuzzerInitialize(int*, char***)
{
    bench();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* p_data, size_t p_size)
{
    const QByteArray file =
        fileOf(QByteArray(reinterpret_cast<const char*>(p_data), static_cast<int>(p_size)));
    ActionImage& image = bench().image;
    const QString path = bench().path;

    image.reset();
    image.setModified(true);
    write(path, file);
    const bool hasImage = file.size() >= s_size;
    fuzzCheck(image.loadFrom(path) == hasImage, "a file's size tells whether it holds an image");
    fuzzCheck(image.isModified() != hasImage, "a loaded image, and that alone, is unchanged");

    ActionImage reset;
    reset.reset();
    const QByteArray tail = file.right(s_size);
    const bool isGood = hasImage && tail.at(5) == 0 && tail.at(57468) == 0;
    const QByteArray expected = isGood ? tail : reset.bytes();
    fuzzCheck(image.bytes() == expected, "the image isn't the file's");
    readImage(image);
    // Read in one piece with the text before it, the image is the same.
    reset.setBytes(file);
    fuzzCheck(reset.bytes() == expected, "the bytes of a file are another image than the file");

    // Out and in again.
    write(path, "<vantrel/>\n");
    fuzzCheck(image.appendTo(path), "the image can't be appended");
    QFile saved(path);
    fuzzCheck(saved.open(QIODevice::ReadOnly) && saved.readAll() == "<vantrel/>\n" + expected,
              "the image isn't appended as it stands");
    image.reset();
    fuzzCheck(image.loadFrom(path) && image.bytes() == expected, "a saved image doesn't come back");
    return 0;
}
