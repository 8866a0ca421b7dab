#include "gestures.h"

#include "modules/mainmodule.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <valgrind/callgrind.h>

#include <cstdio>

namespace
{
/** Has callgrind count what some work takes, and dump it under a name. */
template <class Work> void count(const char* p_name, Work p_work)
{
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    p_work();
    CALLGRIND_DUMP_STATS_AT(p_name);
    CALLGRIND_STOP_INSTRUMENTATION;
}

/** A gesture of the table of operations, and what it starts from. */
struct Path {
    const char* name;
    const char* operation;
    bool rows;
    double zoom;
    int runs;
};
// Without a display the screen is taken for a small one, where blocks are drawn 0.5 smaller than
// the factor says.
const Path s_paths[] = {
    {"open 200 blocks", "open", false, 1, 1},
    {"drag 100 of 200 blocks, 50 moves", "drag middle", false, 1.5, 50},
    {"drag in a full canvas, 5 moves", "drag middle", true, 1.1, 5},
    {"a block from the palette, 20 moves", "palette drag", false, 1.5, 20},
    {"drop with the code shown", "drop, C shown", false, 1.5, 1},
    {"hover, 50 moves", "hover", true, 1.5, 50},
    {"zoom a full canvas, 4 steps", "zoom step", true, 1.1, 4},
    {"delete 100 blocks, undo, redo, undo", "delete", false, 1, 1},
    {"copy and paste 100 blocks, undo, redo, undo", "paste", false, 1, 1},
    {"save 200 blocks", "save", false, 1, 1},
    {"generate C of 200 blocks", "generate", false, 1, 1},
};

const Operation& operation(const char* p_name)
{
    for (const Operation& row : operations()) {
        if (qstrcmp(row.name, p_name) == 0) {
            return row;
        }
    }
    qFatal("There is no operation \"%s\".", p_name);
}
} // namespace

/**
 * A fixed scenario for callgrind, which dumps the counts of each of its paths; benchmarks/
 * instructions.py runs it and compares them. It prints what they depend on besides the program.
 */
int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    std::printf("Qt %s, compiler %s, build %s\n", qVersion(), __VERSION__, TILER_BUILD_TYPE);
    if (!RUNNING_ON_VALGRIND) {
        std::fputs("This is to be run by valgrind --tool=callgrind.\n", stderr);
        return 1;
    }

    Bench bench;
    const QString pattern = QStringLiteral("100 103 101 106 104 102 118 105");
    const QString chain = bench.write({QStringLiteral("chain"), pattern, false}, 200);
    const QString rows = bench.write({QStringLiteral("full"), pattern, true}, 200);
    for (const Path& path : s_paths) {
        const QString& program = path.rows ? rows : chain;
        const Operation& row = operation(path.operation);
        // The first time, pictures are loaded and drawn at their size.
        for (const bool counted : {false, true}) {
            Figures figures;
            bench.open(program);
            bench.zoomTo(path.zoom);
            if (counted) {
                count(path.name, [&] { row.run(bench, program, path.runs, figures); });
            } else {
                row.run(bench, program, qMin(path.runs, 2), figures);
            }
        }
    }
    return 0;
}
