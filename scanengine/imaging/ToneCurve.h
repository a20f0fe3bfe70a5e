#pragma once

#include <QImage>

#include <array>

namespace scanengine {

/// What becomes of each level of an 8-bit channel.
using ToneCurve = std::array<uchar, 256>;

/// `image`, 8-bit grey or RGB32, with `curve` applied to all its channels alike.
[[nodiscard]] QImage withToneCurve(QImage image, const ToneCurve &curve);

} // namespace scanengine
