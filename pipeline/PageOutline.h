#pragma once

#include "pipeline/Quad.h"

#include <QImage>

#include <optional>

namespace velmor {

/// The outline of the one document that lies on a scan or photo: its four corners in the order in
/// which they are shown, whichever way up the document lies.
///
/// Needs no more than that the document is of another shade than what lies around it, by a few
/// steps of 255. Takes some tens of milliseconds for an image of 1800 pixels, on which its corners
/// are true to a few pixels. Pure; any thread. Nothing when unsure: for a page that fills the
/// image, for several documents, and for anything that hasn't got four straight sides.
[[nodiscard]] std::optional<Quad> findPageOutline(const QImage &base);

} // namespace velmor
