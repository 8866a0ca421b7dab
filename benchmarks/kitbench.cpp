#include "bench.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QProcess>

#include <cstdio>
#include <sys/resource.h>

namespace
{
double processorMilliseconds()
{
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    const auto milliseconds = [](const timeval& p_time) {
        return static_cast<double>(p_time.tv_sec) * 1e3 + static_cast<double>(p_time.tv_usec) / 1e3;
    };
    return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

/** What the kit's make and all that it starts take, in a copy of the kit. */
class Kit
{
public:
    explicit Kit(const QString& p_kit)
    {
        if (QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-rp"), p_kit, root()}) != 0) {
            qFatal("There is no kit.");
        }
    }

    void write(const QByteArray& p_source) const
    {
        QFile file(root() + QStringLiteral("/example/user_main.c"));
        if (!file.open(QIODevice::WriteOnly) || file.write(p_source) != p_source.size()) {
            qFatal("The program could not be written.");
        }
    }

    Times compile() const
    {
        const QString folder = root() + QStringLiteral("/example/build/gcc");
        QProcess process;
        process.setWorkingDirectory(folder);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QElapsedTimer clock;
        const double before = processorMilliseconds();
        clock.start();
        process.start(folder + QStringLiteral("/make.exe"),
                      {QStringLiteral("TARGET_NAME=bench"), QStringLiteral("USER_TASK_NUMBER=0")});
        process.waitForFinished(-1);
        const double elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
            qFatal("The program does not compile.");
        }
        return {elapsed, processorMilliseconds() - before};
    }

    void forgetRuntime() const
    {
        QDir(root() + QStringLiteral("/example/build/gcc/objects/runtime")).removeRecursively();
    }

private:
    QString root() const { return m_folder.filePath(QStringLiteral("gcc")); }

    QTemporaryDir m_folder;
};

void print(const Shape& p_shape, int p_blocks, const char* p_operation, const Samples& p_samples)
{
    // As tilerbench prints it, for table.py.
    std::printf("%-8s %7d %4.1f  %-16s %5d %10.3f %10.3f %10.3f %10.3f %10.3f\n",
                qPrintable(p_shape.name), p_blocks, 1.0, p_operation, p_samples.count(),
                p_samples.median().processor, p_samples.worst().processor, p_samples.median().clock,
                p_samples.worst().clock, 1000 * p_samples.median().processor / p_blocks);
    std::fflush(stdout);
}
} // namespace

/** Times the kit from make's start to its end: all processes together. */
int main(int p_count, char** p_arguments)
{
    const QApplication application(p_count, p_arguments);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    QCommandLineParser parser;
    parser.addPositionalArgument(QStringLiteral("shapes"), QStringLiteral("shapes.json"));
    parser.addPositionalArgument(QStringLiteral("kit"), QStringLiteral("the kit's folder, gcc"));
    const QCommandLineOption shape(QStringLiteral("shape"), QString(), QStringLiteral("name"),
                                   QStringLiteral("mixed"));
    const QCommandLineOption blocks(QStringLiteral("blocks"), QString(), QStringLiteral("list"),
                                    QStringLiteral("100,200,1000,5000,10000"));
    const QCommandLineOption runs(QStringLiteral("runs"), QString(), QStringLiteral("number"),
                                  QStringLiteral("9"));
    parser.addOptions({shape, blocks, runs});
    parser.process(application);
    if (parser.positionalArguments().size() != 2) {
        parser.showHelp(2);
    }

    const Kit kit(parser.positionalArguments().at(1));
    Bench bench;
    for (const Shape& each : readShapes(parser.positionalArguments().at(0))) {
        if (each.name != parser.value(shape)) {
            continue;
        }
        for (const QString& size : parser.value(blocks).split(QLatin1Char(','))) {
            const int count = size.toInt();
            bench.open(bench.write(each, count));
            const QByteArray source = bench.view().generateProjectCode(1).toUtf8();
            Samples changed;
            Samples unchanged;
            Samples first;
            for (int i = 0; i < parser.value(runs).toInt(); ++i) {
                // A comment makes it another text.
                kit.write(source + "// " + QByteArray::number(i) + '\n');
                changed.append(kit.compile());
                unchanged.append(kit.compile());
            }
            print(each, count, "compile", changed);
            print(each, count, "compile again", unchanged);
            if (count <= 200) {
                kit.forgetRuntime();
                first.append(kit.compile());
                print(each, count, "with runtime", first);
            }
        }
    }
    return 0;
}
