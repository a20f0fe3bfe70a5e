#pragma once

#include <QImage>

namespace scanengine {

/// `image`, 8-bit grey or RGB32, made lighter and with more contrast, or less of both.
///
/// Both run from -1000 to 1000, 0 and 0 change nothing, values outside count as the nearest inside.
/// Brightness moves every level by a third of its value, of 255. Contrast then spreads the levels
/// around 128: `contrast` c by 1 + c/900, and -c by the inverse. What that carries past black or
/// white comes to rest there smoothly: no level overtakes another, and detail near the ends is
/// pressed together before any is lost.
[[nodiscard]] QImage withLevels(QImage image, int brightness, int contrast);

/// `image`, 8-bit grey or RGB32, with its darkest content black and its paper or lightest area
/// white; all channels alike, so that no colour shifts.
///
/// The darkest content is what little of it is darker than, and is moved to black only part of the
/// way: faint pencil alone on a page doesn't turn black, and a photograph stays natural. Specks and
/// the page's rim don't count. Faint strokes keep their distance from the paper. An image that
/// reaches from black to white stays as it is.
[[nodiscard]] QImage withAutoLevels(QImage image);

} // namespace scanengine
