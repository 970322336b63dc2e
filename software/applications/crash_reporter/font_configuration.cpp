#include "crash_reporter/font_configuration.h"

#include <fontconfig/fontconfig.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

namespace {

constexpr char variable[] = "FONTCONFIG_FILE";
constexpr char fileFromProgram[] = "../share/r4_crash_reporter/fonts.conf";

/**
 * By itself the library would also look through every rule that the system offers, only
 * to be able to list them: a quarter of the time that the program takes to start.
 */
void readFontConfiguration(const char *file)
{
    const std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> configuration(FcConfigCreate(),
                                                                              FcConfigDestroy);
    const auto *name = reinterpret_cast<const FcChar8 *>(file);
    if (configuration && FcConfigParseAndLoad(configuration.get(), name, /* complain */ FcTrue))
        FcConfigSetCurrent(configuration.get()); // keeps it alive
}

} // namespace

void useOwnFontConfiguration(const std::string &program)
{
    if (std::getenv(variable))
        return;
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(program, error);
    const std::filesystem::path file = target.parent_path() / fileFromProgram;
    if (!error && std::filesystem::is_regular_file(file, error))
        readFontConfiguration(file.lexically_normal().c_str());
}
