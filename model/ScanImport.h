#pragma once

#include "model/AppModel.h"

#include <QCoroTask>
#include <QList>
#include <QStringList>
#include <QUrl>

namespace velmor {

/// What came of an import.
struct ImportOutcome {
    QList<QUrl> saved;     ///< The new scans.
    QStringList unread;    ///< Names of the files that can't be read, or aren't documents.
    bool isWritten = true; ///< Nothing failed to be written.
    bool isMade = true;    ///< All that was read became pages.
    int present = 0;       ///< Files that are scans of this folder already.
    QString textProblem;   ///< Why no text can be recognised, if it should have been.

    /// All of it, for the user.
    [[nodiscard]] QString message() const;
};

/// Brings files from elsewhere into the output folder that the model has now, as new scans: PDFs as
/// they are, and the images as the pages of one PDF, with their text if the model's settings say
/// so, and with copies of them as its raw pages. The files themselves are only read. Folders are
/// looked into, one level deep.
///
/// Nothing is ever replaced, and a scan comes whole or not at all: what can't be read is left out
/// and told, as is what can't be written. Files are read and copied in the background. `progress`
/// counts the pages that are made of images. Ends without an outcome's worth if the model goes.
[[nodiscard]] QCoro::Task<ImportOutcome> importFiles(QPointer<AppModel> model, QList<QUrl> files,
                                                     VisionOCR::Progress progress = {});

} // namespace velmor
