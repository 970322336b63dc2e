// Runs a fuzz target over every file of a folder and over the beginnings of each file,
// without the fuzzer: what was once found stays mended in every build.
//
//   replay_TARGET FOLDER [BEGINNINGS]    of a file, spread over it; all unless given

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

bool replay(const QString &path, int mostBeginnings)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    // Should one crash, its name is the last line on the screen.
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    const int step = mostBeginnings > 0 ? bytes.size() / mostBeginnings + 1 : 1;
    for (int left = bytes.size(); left >= 0; left -= step)
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                               static_cast<std::size_t>(left));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    limitMemory();
    if (argc < 2 || argc > 3)
        return 2;
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const int mostBeginnings = argc == 3 ? QByteArray(argv[2]).toInt() : 0;
    const QStringList seeds = folder.entryList(QDir::Files, QDir::Name);
    for (const QString &seed : seeds) {
        if (!replay(folder.filePath(seed), mostBeginnings)) {
            std::fprintf(stderr, "cannot be read: %s\n", qPrintable(seed));
            return 1;
        }
    }
    std::printf("%d files replayed\n", int(seeds.size()));
    return seeds.isEmpty() ? 1 : 0;
}
