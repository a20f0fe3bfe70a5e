#pragma once

#include <QRectF>
#include <QTransform>

namespace velmor {

/// A page as a preview lays it out: how large it is shown, and where its page space is on it.
///
/// Places on a sheet are in points from its top left, rotation applied; page space is in points
/// from the lower left, as the file has it.
struct PageSheet {
    QRectF cropBox;   ///< In page space.
    int rotation = 0; ///< Clockwise degrees, a multiple of 90.

    [[nodiscard]] QSizeF size() const
    {
        return rotation % 180 == 0 ? cropBox.size() : cropBox.size().transposed();
    }

    /// From places on the sheet to page space.
    [[nodiscard]] QTransform toPageSpace() const;

    bool operator==(const PageSheet &) const = default;
};

} // namespace velmor
