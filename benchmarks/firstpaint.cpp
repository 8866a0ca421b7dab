// Loaded into the program in front of Qt's own library, this tells when the first picture of a
// window goes to the screen, and ends the program there:
//   STARTED=<nanoseconds of the monotonic clock> LD_PRELOAD=libfirstpaint.so vantrel
// It prints the milliseconds since then by the clock, those of processor time that the interface
// thread took, and the resident memory in MB.
#include <QBackingStore>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <unistd.h>

namespace
{
double nanoseconds(clockid_t p_clock)
{
    timespec now{};
    clock_gettime(p_clock, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

double residentMegabytes()
{
    long pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%*s %ld", &pages) != 1) {
            pages = 0;
        }
        std::fclose(file);
    }
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}
} // namespace

void QBackingStore::flush(const QRegion&, QWindow*, const QPoint&)
{
    const double now = nanoseconds(CLOCK_MONOTONIC);
    const char* started = std::getenv("STARTED");
    const double begin = started ? std::atof(started) : 0;
    std::printf("%.1f %.1f %.1f\n", (now - begin) / 1e6, nanoseconds(CLOCK_THREAD_CPUTIME_ID) / 1e6,
                residentMegabytes());
    std::fflush(stdout);
    std::_Exit(0);
}
