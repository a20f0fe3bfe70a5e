#pragma once

namespace velmor {

/// What the command's exit codes say to scripts.
enum class ExitCode {
    success = 0,
    wrongUse = 2,
    nothingScanned = 3,
    noScanner = 4,
    engineFailed = 5, ///< It couldn't start, went away, or reported an error.
    notSaved = 6,     ///< The PDF, or one of several, couldn't be saved.
    noDisplay = 7     ///< There is nothing to open the window on.
};

} // namespace velmor
