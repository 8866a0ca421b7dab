#include "gestures.h"

#include "modules/mainmodule.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <valgrind/callgrind.h>

#include <cstdio>

namespace
{
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
    {"drop with the code shown", "code drop", false, 1.5, 1},
    {"press, first move, release, 5 times", "press", false, 1.5, 5},
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

const Path& pathOf(const char* p_name)
{
    for (const Path& path : s_paths) {
        if (qstrcmp(path.name, p_name) == 0) {
            return path;
        }
    }
    qFatal("There is no path \"%s\".", p_name);
}
} // namespace

/**
 * Fixed scenarios for callgrind: the path that the argument names, or, without one, a list of the
 * paths and before it what their counts depend on besides the program. One path a process:
 * callgrind's counts go wrong when counting begins for a second time. benchmarks/instructions.py
 * runs them all and compares them.
 */
int main(int argc, char** argv)
{
    if (argc < 2) {
        std::printf("Qt %s, compiler %s, build %s\n", qVersion(), __VERSION__, TILER_BUILD_TYPE);
        for (const Path& path : s_paths) {
            std::puts(path.name);
        }
        return 0;
    }
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    if (!RUNNING_ON_VALGRIND) {
        std::fputs("This is to be run by valgrind --tool=callgrind.\n", stderr);
        return 1;
    }

    const Path& path = pathOf(argv[1]);
    Bench bench;
    const QString pattern = QStringLiteral("100 103 101 106 104 102 118 105");
    const QString program = bench.write(
        {path.rows ? QStringLiteral("full") : QStringLiteral("chain"), pattern, path.rows}, 200);
    const Operation& row = operation(path.operation);
    // The first time, pictures are loaded and drawn at their size.
    for (const bool counted : {false, true}) {
        Figures figures;
        bench.open(program);
        bench.zoomTo(path.zoom);
        if (counted) {
            CALLGRIND_START_INSTRUMENTATION;
        }
        row.run(bench, program, counted ? path.runs : qMin(path.runs, 2), figures);
        if (counted) {
            CALLGRIND_DUMP_STATS_AT(path.name);
            CALLGRIND_STOP_INSTRUMENTATION;
        }
    }
    return 0;
}
