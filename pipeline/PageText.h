#pragma once

#include "pipeline/PdfDocument.h"

#include <QList>
#include <QPointF>
#include <QString>

#include <optional>

/// The text on a page and where it stands.
///
/// Places are in points from the top left of the page as shown, its crop box and rotation applied.
/// A place in the text is the number of characters before it, in the order in which the renderer
/// reads the page. All of this waits its turn at the renderer, ahead of pictures, and is kept
/// off the main thread; calls take a few milliseconds, and each reads the page anew. Nothing
/// is the answer for a damaged page.
namespace velmor {

/// Some characters in a row.
struct TextRange {
    int start = 0;
    int length = 0;

    bool operator==(const TextRange &) const = default;
};

/// Text with the boxes that cover it, one for each word or line as the page's author wrote them.
struct TextRuns {
    QString text; ///< Lines are ended by "\r\n".
    QList<QRectF> boxes;
};

/// The whole text of a page.
struct PageText : TextRuns {
    /// The rotation at which the lines are read. It's the page's own for pages that are laid out
    /// as they are shown, and 0 for those that were turned after they had been written.
    int rotation = 0;
};

[[nodiscard]] std::optional<PageText> pageText(const PdfPage &page);

/// The gap between two characters of `whole`, the text of `page`, that lies nearest to `point`.
/// Nothing for a page without text.
[[nodiscard]] std::optional<int> textPositionAt(const PdfPage &page, const PageText &whole,
                                                QPointF point);

/// A part of `whole`, the text of `page`.
[[nodiscard]] std::optional<TextRuns> partOfText(const PdfPage &page, const PageText &whole,
                                                 TextRange range);

} // namespace velmor
