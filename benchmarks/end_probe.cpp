// Loaded into a program under measurement with LD_PRELOAD: writes down what the
// program had used when it restarted the machine, or else when it exited. Who
// restarts the machine is not there any more to be waited for.
//
// R4_BENCH_START   seconds since the epoch when the program was started
// R4_BENCH_RECORD  file for the record
// R4_BENCH_SYNC    a file to be synced with its folder before the record is taken,
//                  for programs that leave their output to the kernel

#include "usage_record.h"

#include <dlfcn.h>
#include <sys/reboot.h>

namespace {

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
