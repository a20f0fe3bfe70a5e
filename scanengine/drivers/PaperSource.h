#pragma once

namespace scanengine {

/// Where paper may be taken from: the feeder when it holds paper and else the flatbed, or the
/// flatbed alone. A device that has only one of both uses that one, whatever was asked for.
enum class PaperSource { automatic, flatbed };

} // namespace scanengine
