#pragma once

#include "pipeline/GlyphlessFont.h"
#include "pipeline/OcrLine.h"

#include <QByteArray>
#include <QSizeF>

#include <span>

namespace velmor {

/// The invisible text of a page, as PDF operators, and the fonts that it needs.
///
/// A line whose characters Helvetica has is set in Helvetica; any other goes as a whole to the
/// glyphless font.
struct TextLayer {
    QByteArray operators; ///< Empty when no line could be set.
    bool usesHelvetica = false;
    GlyphlessFont glyphless;

    /// The names under which `operators` call the fonts.
    static constexpr const char *helveticaName = "/F1";
    static constexpr const char *glyphlessName = "/F2";
};

/// The text layer of `lines` on a page of `size` points: boxes scaled to the page without a flip,
/// font size 0.85 of a box's height, baseline 0.18 of it above the lower edge, each line stretched
/// to its box's width. Lines without width, or not above one point high, are left out.
[[nodiscard]] TextLayer textLayer(std::span<const OcrLine> lines, QSizeF size);

} // namespace velmor
