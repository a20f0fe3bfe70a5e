#pragma once

#include <QImage>
#include <QSizeF>
#include <QUrl>

#include <optional>

namespace velmor {

/// The first page of a scan as a small picture.
struct Thumbnail {
    /// Height of a cell by its width, for a page shown at `size`, 0.3 to 3.4.
    [[nodiscard]] static double ratioOf(QSizeF size);

    QImage image;
    double ratio = 1.3;
};

/// Draws the whole first page, rotation included, for a cell of `width` points: at least 440 pixels
/// wide, and as high as its ratio says. Nothing if the file doesn't open, has no page or can't be
/// drawn. Blocks for the drawing: for background threads.
[[nodiscard]] std::optional<Thumbnail> renderThumbnail(const QUrl &url, double width);

} // namespace velmor
