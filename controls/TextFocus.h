#pragma once

namespace velmor {

/// Whether typing goes into a text now: a text field of this application has the focus, and isn't
/// there only to be read. Then single letters, Return and the like aren't commands. Main thread.
[[nodiscard]] bool textHasFocus();

} // namespace velmor
