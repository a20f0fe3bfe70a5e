#pragma once

#include <QPointF>

#include <optional>

namespace velmor {

/// What a page is edited for.
enum class EditorMode { crop, magic };

/// Which part of a document is in view, handed from the preview to the editor.
struct EditorViewport {
    int pageIndex = 0; ///< From 0.
    double zoom = 1;   ///< At 1 the page is fitted.
    /// The middle of the view as fractions of the page, from its top left. It may lie outside the
    /// page. Absent: the page's own middle.
    std::optional<QPointF> center = std::nullopt;

    bool operator==(const EditorViewport &) const = default;
};

} // namespace velmor
