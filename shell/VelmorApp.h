#pragma once

#include "cli/CommandLine.h"

namespace velmor {

/// The application in its window, from its start to its end: makes the application object and the
/// `AppDelegate`. Answers the exit code of the process; `ExitCode::noDisplay`, after a word on
/// standard error, if there is nothing to open a window on.
///
/// It ends when the window is closed, and on an interrupt or termination signal.
[[nodiscard]] int runVelmorApp(int &argc, char **argv, const WindowRequest &request);

} // namespace velmor
