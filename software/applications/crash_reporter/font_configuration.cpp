#include "crash_reporter/font_configuration.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace {

constexpr char variable[] = "FONTCONFIG_FILE";
constexpr char fileFromProgram[] = "../share/r4_crash_reporter/fonts.conf";

} // namespace

void useOwnFontConfiguration(const std::string &program)
{
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(program, error);
    const std::filesystem::path file = target.parent_path() / fileFromProgram;
    if (!error && std::filesystem::is_regular_file(file, error))
        setenv(variable, file.lexically_normal().c_str(), /* overwrite */ 0);
}
