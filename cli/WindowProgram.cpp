#include "cli/WindowProgram.h"

#include "cli/TerminalText.h"

#include <filesystem>
#include <unistd.h>

namespace velmor {

namespace {

constexpr int notStarted = 1;

} // namespace

int becomeWindowProgram(char *const *arguments)
{
    std::error_code none;
    const std::filesystem::path folder =
        std::filesystem::read_symlink("/proc/self/exe", none).parent_path();
    for (const char *place : {"velmor-window", "../libexec/velmor/velmor-window"})
        execv((folder / place).c_str(), arguments);
    printErrorLine("velmor: The window's program, velmor-window, can't be started; the commands "
                   "work without it.");
    return notStarted;
}

} // namespace velmor
