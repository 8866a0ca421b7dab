// Loaded into the program in front of Qt's own library, this tells when the first picture of a
// window goes to the screen, and ends the program there:
//   STARTED=<nanoseconds of the monotonic clock> LD_PRELOAD=libfirstpaint.so vantrel
// It prints the milliseconds since then by the clock, those of processor time that the interface
// thread took, and the resident memory in MB. With LATER=<milliseconds> the program goes on for so
// long, and what the interface thread takes in that time comes last.
#include <QBackingStore>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>

#include <pthread.h>
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

void finish()
{
    std::printf("\n");
    std::fflush(stdout);
    std::_Exit(0);
}

void finishLater(clockid_t p_interfaceThread, int p_milliseconds)
{
    const double before = nanoseconds(p_interfaceThread);
    std::this_thread::sleep_for(std::chrono::milliseconds(p_milliseconds));
    std::printf(" %.1f", (nanoseconds(p_interfaceThread) - before) / 1e6);
    finish();
}
} // namespace

void QBackingStore::flush(const QRegion&, QWindow*, const QPoint&)
{
    static bool s_painted = false;
    if (s_painted) {
        return;
    }
    s_painted = true;
    const double now = nanoseconds(CLOCK_MONOTONIC);
    const char* started = std::getenv("STARTED");
    const double begin = started ? std::atof(started) : 0;
    std::printf("%.1f %.1f %.1f", (now - begin) / 1e6, nanoseconds(CLOCK_THREAD_CPUTIME_ID) / 1e6,
                residentMegabytes());
    clockid_t thisThread{};
    if (const char* later = std::getenv("LATER");
        later && pthread_getcpuclockid(pthread_self(), &thisThread) == 0) {
        std::thread(finishLater, thisThread, std::atoi(later)).detach();
        return;
    }
    finish();
}
