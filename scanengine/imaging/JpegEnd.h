#pragma once

class QFile;

namespace scanengine {

/// Whether the JPEG data in `file`, open for reading, comes to its end mark. The decoder fills what
/// is missing from a broken-off file with grey and reports success, so this has to be asked.
[[nodiscard]] bool endsLikeJpeg(QFile &file);

} // namespace scanengine
