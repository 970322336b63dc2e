// Loaded into a program under measurement with LD_PRELOAD: writes down what the
// program had used when it restarted the machine, or else when it exited. Who
// restarts the machine is not there any more to be waited for.
//
// R4_BENCH_START   seconds since the epoch when the program was started
// R4_BENCH_RECORD  file for the record
// R4_BENCH_SYNC    a file to be synced with its folder before the record is taken,
//                  for programs that leave their output to the kernel

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/reboot.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

double secondsSinceEpoch()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

double seconds(const timeval &time)
{
    return double(time.tv_sec) + double(time.tv_usec) * 1e-6;
}

double processorSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/** The peak of the program itself: getrusage() counts what ran before exec, too. */
long peakKibibytes()
{
    FILE *status = std::fopen("/proc/self/status", "re");
    if (status == nullptr)
        return -1;
    char line[256];
    long peak = -1;
    while (peak < 0 && std::fgets(line, sizeof line, status) != nullptr)
        if (std::strncmp(line, "VmHWM:", 6) == 0)
            peak = std::strtol(line + 6, nullptr, 10);
    static_cast<void>(std::fclose(status));
    return peak;
}

void syncPath(const std::string &path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || fsync(descriptor) != 0)
        std::perror(path.c_str());
    close(descriptor);
}

void writeRecord()
{
    const char *start = std::getenv("R4_BENCH_START");
    const char *path = std::getenv("R4_BENCH_RECORD");
    if (start == nullptr || path == nullptr)
        return;
    if (const char *output = std::getenv("R4_BENCH_SYNC")) {
        const std::string file = output;
        syncPath(file);
        syncPath(file.substr(0, file.rfind('/')));
    }
    const double wall = secondsSinceEpoch() - std::strtod(start, nullptr);
    const double processor = processorSeconds();
    FILE *record = std::fopen(path, "we");
    if (record == nullptr)
        return;
    std::fprintf(record, "wall=%.6f\ncpu=%.6f\npeak_kib=%ld\n", wall, processor, peakKibibytes());
    static_cast<void>(std::fclose(record));
}

[[gnu::destructor]] void programExits()
{
    writeRecord();
}

} // namespace

extern "C" int reboot(int command) noexcept
{
    writeRecord();
    using Reboot = int (*)(int);
    return reinterpret_cast<Reboot>(dlsym(RTLD_NEXT, "reboot"))(command);
}
