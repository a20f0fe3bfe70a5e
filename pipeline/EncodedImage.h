#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

/// Images in the form in which a PDF page stores them.
///
/// Pure functions and plain values; any thread. Images are 8 bits a channel, sizes in pixels.
namespace velmor {

/// An image stream of a PDF.
struct EncodedImage {
    enum class Filter {
        jpeg, ///< `bytes` is a whole JPEG file.
        flate ///< `bytes` is zlib data: rows from the top, without padding.
    };

    Filter filter;
    QByteArray bytes;
    QSize size;
    int channels;          ///< 1 grey, 3 RGB, 4 CMYK.
    bool inverted = false; ///< CMYK whose channels count backwards, as JPEG files commonly do.
};

/// `image` as paper shows it: Format_Grayscale8 where the image has no colour by its form, else
/// Format_RGB32; opaque, transparent parts laid on white. Null for a null image and for want of
/// memory.
[[nodiscard]] QImage paperImage(const QImage &image);

/// `image` as a JPEG of `quality`, 0 to 1. Grey images get one channel; transparency is laid on
/// white. Nothing if the image is null or has a side beyond what JPEG can state (65,500 pixels).
[[nodiscard]] std::optional<EncodedImage> jpegImage(const QImage &image, double quality);

/// `image` without loss. Nothing only for a null image.
[[nodiscard]] std::optional<EncodedImage> losslessImage(const QImage &image);

/// The content of a JPEG file as it is. Nothing if its header doesn't state a baseline or
/// progressive image of 8 bits and 1, 3 or 4 channels.
[[nodiscard]] std::optional<EncodedImage> jpegFileImage(const QByteArray &file);

} // namespace velmor
