#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/imaging/ColorMode.h"

#include <QImage>

namespace scanengine {

/// A captured `image`, 8-bit grey or RGB32, as a finished page: the steps that `switches` ask for,
/// in their order, and the colours that `mode` keeps. A null image means that memory ran out.
[[nodiscard]] QImage finishedPage(QImage image, const AutoSwitches &switches, ColorMode mode);

} // namespace scanengine
