#include "usage_record.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string>
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

/** Of the program and of those it has waited for: a shell's pipeline. */
double processorSeconds()
{
    double all = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage = {};
        getrusage(who, &usage);
        all += seconds(usage.ru_utime) + seconds(usage.ru_stime);
    }
    return all;
}

/** Of the program itself: getrusage() counts what ran before exec, too. */
long statusKibibytes(const char *field)
{
    FILE *status = std::fopen("/proc/self/status", "re");
    if (status == nullptr)
        return -1;
    char line[256];
    const std::size_t length = std::strlen(field);
    long value = -1;
    while (value < 0 && std::fgets(line, sizeof line, status) != nullptr)
        if (std::strncmp(line, field, length) == 0)
            value = std::strtol(line + length, nullptr, 10);
    static_cast<void>(std::fclose(status));
    return value;
}

void syncPath(const std::string &path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || fsync(descriptor) != 0)
        std::perror(path.c_str());
    close(descriptor);
}

} // namespace

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
    std::fprintf(record, "wall=%.6f\ncpu=%.6f\npeak_kib=%ld\nresident_kib=%ld\n", wall, processor,
                 statusKibibytes("VmHWM:"), statusKibibytes("VmRSS:"));
    static_cast<void>(std::fclose(record));
}
