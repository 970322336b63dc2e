// Runs a fuzz target over every file of a folder and over every beginning of each
// file, without the fuzzer: what was once found stays mended in every build.

#include <QDir>
#include <QFile>

#include <cstdio>
#include <sys/resource.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size);

namespace {

/** Where memory is not measured, too much of it is not to be had. Sanitisers need theirs. */
void limitMemory()
{
#ifndef R4_MEASURED_MEMORY
    constexpr rlim_t bytes = 64U << 20U;
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_DATA, &limit);
#endif
}

bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    // Should one crash, its name is the last line on the screen.
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    for (int size = 0; size <= bytes.size(); ++size)
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                               static_cast<std::size_t>(size));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    limitMemory();
    const QDir folder(argc == 2 ? QString::fromLocal8Bit(argv[1]) : QString());
    const QStringList seeds = argc == 2 ? folder.entryList(QDir::Files, QDir::Name) : QStringList();
    for (const QString &seed : seeds) {
        if (!replay(folder.filePath(seed))) {
            std::fprintf(stderr, "cannot be read: %s\n", qPrintable(seed));
            return 1;
        }
    }
    std::printf("%d files replayed\n", int(seeds.size()));
    return seeds.isEmpty() ? 1 : 0;
}
