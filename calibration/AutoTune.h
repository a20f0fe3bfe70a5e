#pragma once

#include <QImage>

#include <optional>

namespace velmor {

/// Brightness and contrast in the engine's units, -1000 to 1000.
struct Tones {
    int brightness = 0;
    int contrast = 0;

    bool operator==(const Tones &) const = default;
};

/// The tones that spread what a sample shows from black to white: nearly all of its levels, as the
/// darkest and the lightest twentieth don't count. Nothing for a null image. Pure; any thread.
[[nodiscard]] std::optional<Tones> autoTune(const QImage &sample);

} // namespace velmor
