#pragma once

#include <QRectF>
#include <QString>

namespace velmor {

/// One recognised line of text and its place on the page image.
///
/// Lives only while one page is being built; afterwards the text exists in the PDF alone.
struct OcrLine {
    QString text; ///< Never empty.
    /// Normalised to the image: every coordinate 0 to 1, origin at the lower left, so `top()` is
    /// the line's lower edge.
    QRectF box;

    bool operator==(const OcrLine &) const = default;
};

} // namespace velmor
