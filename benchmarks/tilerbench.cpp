#include "canvasbench.h"
#include "palettebench.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <cstdio>

namespace
{
struct Operation {
    const char* name;
    Samples (CanvasBench::*run)(int);
    /** Runs at up to a thousand blocks, at ten thousand and above. */
    int runs[3];
};
const Operation s_operations[] = {
    {"open", &CanvasBench::open, {9, 5, 3}},
    {"save", &CanvasBench::save, {9, 5, 3}},
    {"generate", &CanvasBench::generate, {25, 9, 5}},
    {"drag", &CanvasBench::drag, {400, 200, 40}},
    {"drop", &CanvasBench::drop, {20, 10, 3}},
    {"palette drag", &CanvasBench::paletteDrag, {400, 200, 40}},
    {"scroll", &CanvasBench::scroll, {160, 160, 160}},
    {"zoom", &CanvasBench::zoom, {16, 16, 16}},
    {"clear", &CanvasBench::clear, {9, 5, 3}},
};

int runsAt(const Operation& p_operation, int p_blocks)
{
    return p_operation.runs[p_blocks <= 1000 ? 0 : p_blocks <= 10000 ? 1 : 2];
}
void print(const QString& p_shape, int p_blocks, const char* p_operation, const Samples& p_samples)
{
    std::printf("%-8s %7d  %-13s %10.3f %10.3f %10.3f %10.3f %10.3f\n", qPrintable(p_shape),
                p_blocks, p_operation, p_samples.median(), p_samples.worst(),
                p_samples.medianBusy(), p_samples.worstBusy(),
                1000 * p_samples.medianBusy() / p_blocks);
    std::fflush(stdout);
}
} // namespace

/**
 * Measures the canvas and prints a table of times in milliseconds: median and worst by the clock,
 * the same by the processor, and the processor's microseconds a block:
 * tilerbench shapes.json [--shape name] [--blocks 50,200] [--only operation] [--runs 5]
 */
int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("shapes"), QStringLiteral("file of the shapes"));
    parser.addOption(
        {QStringLiteral("shape"), QStringLiteral("this shape alone"), QStringLiteral("name")});
    parser.addOption({QStringLiteral("blocks"), QStringLiteral("sizes of the programs"),
                      QStringLiteral("numbers"), QStringLiteral("50,200,1000,10000,100000")});
    parser.addOption(
        {QStringLiteral("only"), QStringLiteral("this operation alone"), QStringLiteral("name")});
    parser.addOption({QStringLiteral("runs"), QStringLiteral("runs of each operation"),
                      QStringLiteral("number"), QStringLiteral("0")});
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        parser.showHelp(2);
    }

    std::printf("%-8s %7s  %-13s %10s %10s %10s %10s %10s\n", "shape", "blocks", "ms", "median",
                "worst", "cpu", "worst cpu", "us/block");
    const int asked = parser.value(QStringLiteral("runs")).toInt();
    if (!parser.isSet(QStringLiteral("only")) && !parser.isSet(QStringLiteral("shape"))) {
        PaletteBench palette;
        const int rounds = asked > 0 ? asked : 20;
        print(QStringLiteral("palette"), 1, "tab", palette.tabs(rounds));
        print(QStringLiteral("palette"), 1, "panel", palette.panels(rounds));
    }
    CanvasBench bench;
    bool any = false;
    const QVector<Shape> shapes = readShapes(parser.positionalArguments().constFirst());
    for (const Shape& shape : shapes) {
        if (parser.isSet(QStringLiteral("shape")) &&
            parser.value(QStringLiteral("shape")) != shape.name) {
            continue;
        }
        const QStringList sizes = parser.value(QStringLiteral("blocks")).split(QLatin1Char(','));
        for (const QString& size : sizes) {
            const int blocks = size.toInt();
            if (blocks <= 0 || !bench.setUp(shape, blocks)) {
                std::fprintf(stderr, "no program of %s blocks in shape %s\n", qPrintable(size),
                             qPrintable(shape.name));
                return 1;
            }
            any = true;
            for (const Operation& operation : s_operations) {
                if (parser.isSet(QStringLiteral("only")) &&
                    parser.value(QStringLiteral("only")) != QLatin1String(operation.name)) {
                    continue;
                }
                const Samples samples =
                    (bench.*operation.run)(asked > 0 ? asked : runsAt(operation, blocks));
                print(shape.name, blocks, operation.name, samples);
            }
            if (!parser.isSet(QStringLiteral("only"))) {
                std::printf("%-8s %7d  memory        %10.0f bytes a block\n",
                            qPrintable(shape.name), blocks, bench.bytesPerBlock());
            }
        }
    }
    return any ? 0 : 1;
}
