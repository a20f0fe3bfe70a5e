#pragma once

#include "model/AppModel.h"
#include "pipeline/PdfDocument.h"

#include <QList>
#include <QString>
#include <QUrl>

/// The last step of an edit of one page: new pages take its place, and the file is written.
///
/// For the window and for the commands alike; used on the model's thread, for as long as the file
/// takes. The old file can be brought back by `AppModel::undoEdit`. `document` is what was opened
/// from `file` and is worthless after a failure. The model's `results` aren't read anew, and
/// nothing is shown.
namespace velmor::PageEdits {

/// How an edit went.
struct Outcome {
    bool isWritten = false; ///< The file has the new pages; otherwise it is as it was.
    QString message = {};   ///< For the user, in the user's language; empty if there was no page.
};

/// Puts `pages`, cut out of the page at the zero-based `index`, in that page's place. What leads to
/// the old page leads to the first of them. On success the raw pages, which don't match any more,
/// are removed. Without pages nothing is done.
Outcome putCroppedPages(AppModel &model, PdfDocument &document, int index,
                        const QList<PdfPage> &pages, const QUrl &file);

/// Puts `page`, the page at the zero-based `index` with other levels, in that page's place. The
/// raw pages stay: they serve the next levels.
Outcome putLevelledPage(AppModel &model, PdfDocument &document, int index, const PdfPage &page,
                        const QUrl &file);

} // namespace velmor::PageEdits
