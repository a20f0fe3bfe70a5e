#pragma once

#include "editor/LevelsAnalysis.h"
#include "model/FileStamp.h"
#include "pipeline/PdfDocument.h"
#include "pipeline/Quad.h"

#include <QFuture>
#include <QImage>
#include <QList>
#include <QUrl>

#include <memory>
#include <optional>

namespace velmor {

/// A document that is being edited, and its file as it was before it was read.
struct EditedFile {
    FileStamp stamp;
    PdfDocument document;
    int pageCount = 0;
};

/// One page of it, ready for the screen.
struct EditedPage {
    /// The page in a document of its own, so that it can be worked on while others are loaded.
    std::optional<PdfPage> page = std::nullopt;
    QImage image = {}; ///< Null if none can be made.
    std::optional<RgbaSample> sample = std::nullopt;
    QList<int> histogram = {};
};

/// Lives for as long as somebody waits for the answer; work that hasn't begun by then isn't done.
using Wish = std::shared_ptr<const int>;

/// Reads a file in the background. Null if it can't be opened.
[[nodiscard]] QFuture<std::shared_ptr<EditedFile>> openForEditing(const QUrl &url,
                                                                  const Wish &wish);

/// Loads the page at `index` in the background: the raw page if that is valid and can be read,
/// else the page as shown, with at most `maxDim` pixels on its longer side. Documents are touched
/// by one of these tasks at a time; the caller touches `file.document` while none is under way.
[[nodiscard]] QFuture<EditedPage> loadForEditing(const std::shared_ptr<EditedFile> &file, int index,
                                                 const QUrl &url, double maxDim, const Wish &wish);

/// Looks in the background for the outline of the paper on a page image.
[[nodiscard]] QFuture<std::optional<Quad>> outlineForEditing(const QImage &image, const Wish &wish);

} // namespace velmor
