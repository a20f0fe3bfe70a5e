#pragma once

#include "model/Models.h"
#include "pipeline/OcrLine.h"
#include "pipeline/PdfDocument.h"
#include "pipeline/Quad.h"

#include <QCoroTask>
#include <QImage>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>
#include <vector>

/// From page images to a searchable PDF, and a text layer for one that exists.
///
/// The tasks are started on a thread with an event loop and come back to it between pages; the
/// work on a page runs in the thread pool, one page at a time. They never touch a file that they
/// make: the finished document goes to the caller's `write`, on the thread that the task was
/// started on. They report nothing in words.
namespace velmor::VisionOCR {

/// Resolution at which edits draw a page that has no raw image.
inline constexpr double applyDpi = 300;

/// Called before the first page and after each with the pages done and the pages in all.
using Progress = std::function<void(int done, int total)>;

/// Asked before each further step whether anybody still waits for the answer; on the thread that
/// the task was started on.
using IsWanted = std::function<bool()>;

/// The text lines of an image, in reading order. Blocks for seconds: for background threads.
/// Without text, or when recognition fails, there are none.
[[nodiscard]] std::vector<OcrLine> recognizeSync(const QImage &image);

/// An image file that becomes a page.
struct PageFile {
    QString path;
    double dpi; ///< Dots per inch of its pixels on paper.
};

/// Makes a document of image files, in their order, and answers what `write` answers for it. With
/// `ocr` the text of each page is laid under it.
///
/// False without a call of `write` if any of the images can't be read or put on a page: a document
/// with a missing page is worse than none.
[[nodiscard]] QCoro::Task<bool> assemblePdf(QList<PageFile> pages, bool ocr,
                                            std::function<bool(const PdfDocument &)> write,
                                            Progress progress = {});

/// The same for images that are all of one resolution.
[[nodiscard]] QCoro::Task<bool> assemblePdf(QStringList imagePaths, double dpi, bool ocr,
                                            std::function<bool(const PdfDocument &)> write,
                                            Progress progress = {});

/// A new page from an old one: the image file `raw`, or where there is none that can be read the
/// old page drawn at `dpi`; with `levels` applied; with its text if `ocr` is set. It has the old
/// page's size as displayed, and no rotation. Nothing if there is no image to be had.
[[nodiscard]] QCoro::Task<std::optional<PdfPage>> rebuildPage(PdfPage page, double dpi,
                                                              std::optional<MagicSettings> levels,
                                                              bool ocr, std::optional<QUrl> raw);

/// A new page from each of the regions `boxes` of an old one as it is shown, in their order; see
/// `correctPerspective`. The pixels come from the image file `raw`, or where there is none that can
/// be read from the old page drawn at `dpi`. Each page has the true size of its region, no
/// rotation, and its own text if `ocr` is set. A box that can't be used is left out; without an
/// image there are no pages. `progress` counts the boxes. Once `isWanted` answers no, the boxes
/// that are left aren't begun.
[[nodiscard]] QCoro::Task<QList<PdfPage>> cropPage(PdfPage page, QList<Quad> boxes, double dpi,
                                                   bool ocr, std::optional<QUrl> raw,
                                                   Progress progress = {}, IsWanted isWanted = {});

/// Gives every page of the document at `location` a new text layer, its picture redrawn at `dpi`,
/// and answers what `write` answers for the result. What else the document holds stays.
///
/// False without a call of `write` if the document doesn't open, has no pages, or if one of them
/// can't be rebuilt.
[[nodiscard]] QCoro::Task<bool>
ocrDocument(QUrl location, double dpi, std::function<bool(const PdfDocument &, const QUrl &)> write,
            Progress progress = {});

/// Applies `settings` to every page of each document, and hands each finished one to `write`, once,
/// on the thread that the task was started on. True only if all of them were written; one that
/// fails stays as it is, and the next is taken up.
///
/// Earlier levels don't add up: a page starts again from its raw image, if the document has a raw
/// image for each of its pages and the page isn't turned; else from how it looks, drawn at `dpi`.
/// Sizes, rebuilt text with `ocr`, and what else the document holds are as for `rebuildPage` and
/// `ocrDocument`. `progress` counts the pages of each document anew.
[[nodiscard]] QCoro::Task<bool>
applyMagic(MagicSettings settings, QList<QUrl> locations, double dpi, bool ocr,
           std::function<bool(const PdfDocument &, const QUrl &)> write, Progress progress = {});

} // namespace velmor::VisionOCR
