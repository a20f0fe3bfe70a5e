#pragma once

namespace velmor {

/// Becomes the program velmor-window, with the same arguments (null behind the last). It lies in
/// this program's folder, as in a build tree, or in libexec/velmor beside that.
///
/// Returns, an exit code, only if it can't be started, after a word on standard error.
[[nodiscard]] int becomeWindowProgram(char *const *arguments);

} // namespace velmor
