#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/imaging/ColorMode.h"

#include <QImage>

#include <optional>

namespace scanengine {

/// A captured `image`, 8-bit grey or RGB32, as a finished page: the steps that `switches` ask for,
/// in their order, and the colours that `mode` keeps. Nothing if it is blank and blank pages are to
/// be left out; a null image means that memory ran out.
[[nodiscard]] std::optional<QImage> finishedPage(QImage image, const AutoSwitches &switches,
                                                 ColorMode mode);

} // namespace scanengine
