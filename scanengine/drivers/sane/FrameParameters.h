#pragma once

namespace scanengine {

/// The formats of frames, in the order of SANE_Frame.
enum class FrameFormat { gray, rgb, red, green, blue };

/// What a device says about a frame before it sends it, as SANE_Parameters.
struct FrameParameters {
    FrameFormat format = FrameFormat::gray;
    bool isLast = true; ///< Of the frames of one page.
    int bytesPerLine = 0;
    int pixelsPerLine = 0;
    int lines = -1; ///< -1 if the device doesn't know before the end.
    int depth = 8;  ///< Bits a sample: 1, 8 or 16.

    bool operator==(const FrameParameters &) const = default;
};

} // namespace scanengine
