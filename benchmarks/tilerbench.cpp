#include "gestures.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>

namespace
{
void printHead()
{
    std::printf("%-8s %7s %4s  %-16s %5s %10s %10s %10s %10s %10s\n", "shape", "blocks", "zoom",
                "ms", "runs", "cpu", "worst cpu", "clock", "worst", "us/block");
}

void print(const QString& p_shape, int p_blocks, double p_zoom, const QString& p_operation,
           const Samples& p_samples)
{
    std::printf("%-8s %7d %4.1f  %-16s %5d %10.3f %10.3f %10.3f %10.3f %10.3f\n",
                qPrintable(p_shape), p_blocks, p_zoom, qPrintable(p_operation), p_samples.count(),
                p_samples.median().processor, p_samples.worst().processor, p_samples.median().clock,
                p_samples.worst().clock, 1000 * p_samples.median().processor / p_blocks);
    std::fflush(stdout);
}

void print(const QString& p_shape, int p_blocks, double p_zoom, const Figures& p_figures)
{
    for (auto figure = p_figures.begin(); figure != p_figures.end(); ++figure) {
        print(p_shape, p_blocks, p_zoom, figure.key(), figure.value());
    }
}

/** In a process of its own: opens a file in a window that shows, and tells what that took. */
int openOnce(const QString& p_path)
{
    Bench bench;
    Samples samples;
    bench.takePainted(samples, [&] { bench.open(p_path); });
    std::printf("%f %f\n", samples.median().clock, samples.median().processor);
    return 0;
}

/** What the first opening of a file takes, each in a fresh process. */
Samples firstOpenings(const QString& p_path, int p_runs)
{
    Samples samples;
    for (int i = 0; i < p_runs; ++i) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--open"), p_path});
        process.waitForFinished(-1);
        const QList<QByteArray> figures = process.readAllStandardOutput().simplified().split(' ');
        if (process.exitCode() != 0 || figures.size() != 2) {
            qFatal("A fresh process could not open the program.");
        }
        samples.append({figures.at(0).toDouble(), figures.at(1).toDouble()});
    }
    return samples;
}

/** What is asked for on the command line; an empty list stands for all there is. */
struct Choice {
    QStringList shapes;
    QStringList sizes;
    QStringList zooms;
    QStringList operations;
    int runs = 0;

    bool wants(const char* p_operation) const
    {
        return operations.isEmpty() || operations.contains(QLatin1String(p_operation));
    }
    int runsOf(const Operation& p_operation, int p_blocks) const
    {
        return runs > 0 ? runs : p_operation.runs[p_blocks <= 1000 ? 0 : p_blocks <= 10000 ? 1 : 2];
    }
};

void measureProgram(Bench& p_bench, const Choice& p_choice, const QString& p_shape, int p_blocks,
                    const QString& p_path)
{
    if (p_choice.wants("first open")) {
        print(p_shape, p_blocks, 1, QStringLiteral("first open"),
              firstOpenings(p_path, p_choice.runs > 0 ? p_choice.runs : 5));
    }
    for (const Operation& operation : operations()) {
        if (!p_choice.wants(operation.name)) {
            continue;
        }
        const QStringList zooms =
            operation.zooms ? p_choice.zooms : QStringList{QStringLiteral("1")};
        for (const QString& zoom : zooms) {
            Figures figures;
            p_bench.open(p_path);
            p_bench.zoomTo(zoom.toDouble());
            operation.run(p_bench, p_path, p_choice.runsOf(operation, p_blocks), figures);
            print(p_shape, p_blocks, zoom.toDouble(), figures);
        }
    }
    p_bench.zoomTo(1);
}

QStringList listOf(const QCommandLineParser& p_parser, const char* p_option)
{
    return p_parser.value(QLatin1String(p_option)).split(QLatin1Char(','), Qt::SkipEmptyParts);
}
} // namespace

/**
 * Measures the program in its own window and prints a table of milliseconds: median and worst of
 * the interface thread's processor time, the same by the clock, and its microseconds a block:
 * tilerbench shapes.json [--shape names] [--blocks 50,200] [--zoom 0.6,1] [--only operations]
 *            [--runs 5]
 */
int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    // As the program does it.
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("shapes"), QStringLiteral("file of the shapes"));
    parser.addOptions(
        {{QStringLiteral("shape"), QStringLiteral("these shapes"), QStringLiteral("names")},
         {QStringLiteral("blocks"), QStringLiteral("sizes of the programs"),
          QStringLiteral("numbers"), QStringLiteral("50,200,1000,10000")},
         {QStringLiteral("zoom"), QStringLiteral("zoom factors, but for the limits"),
          QStringLiteral("numbers"), QStringLiteral("0.6,1,1.9")},
         {QStringLiteral("only"), QStringLiteral("these operations"), QStringLiteral("names")},
         {QStringLiteral("runs"), QStringLiteral("runs of each operation"),
          QStringLiteral("number"), QStringLiteral("0")},
         {QStringLiteral("open"), QStringLiteral("open this file and tell the times"),
          QStringLiteral("path")}});
    parser.process(application);
    if (parser.isSet(QStringLiteral("open"))) {
        return openOnce(parser.value(QStringLiteral("open")));
    }
    if (parser.positionalArguments().size() != 1) {
        parser.showHelp(2);
    }
    const Choice choice{listOf(parser, "shape"), listOf(parser, "blocks"), listOf(parser, "zoom"),
                        listOf(parser, "only"), parser.value(QStringLiteral("runs")).toInt()};

    Bench bench;
    const QSize canvas = bench.view().viewport()->size();
    const QSize screen = QGuiApplication::primaryScreen()->size();
    std::printf("canvas of %d by %d on a %s screen of %d by %d\n", canvas.width(), canvas.height(),
                qPrintable(QGuiApplication::platformName()), screen.width(), screen.height());
    printHead();
    if (choice.wants("palette")) {
        Figures figures;
        measurePalette(bench, choice.runs > 0 ? choice.runs : 10, figures);
        print(QStringLiteral("palette"), 1, 1, figures);
    }
    bool any = false;
    const QVector<Shape> shapes = readShapes(parser.positionalArguments().constFirst());
    for (const Shape& shape : shapes) {
        if (!choice.shapes.isEmpty() && !choice.shapes.contains(shape.name)) {
            continue;
        }
        for (const QString& size : choice.sizes) {
            const int blocks = size.toInt();
            const QString path = blocks > 0 ? bench.write(shape, blocks) : QString();
            if (path.isEmpty()) {
                std::fprintf(stderr, "no program of %s blocks in shape %s\n", qPrintable(size),
                             qPrintable(shape.name));
                return 1;
            }
            any = true;
            measureProgram(bench, choice, shape.name, blocks, path);
        }
    }
    return any ? 0 : 1;
}
