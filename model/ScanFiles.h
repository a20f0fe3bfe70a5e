#pragma once

#include "model/AppModel.h"

#include <QList>
#include <QString>
#include <QUrl>

/// What can be done with saved scans as whole files, for the window and for the commands alike.
///
/// Used on the model's thread, for as long as the files take. Files that don't open are left out;
/// after a failure to write, the others are still done. The model's `results` aren't read anew.
namespace velmor::ScanFiles {

/// How an operation went.
struct Outcome {
    bool isWritten = true;     ///< No file failed to be written.
    QString message;           ///< For the user, in the user's language.
    QList<QUrl> saved = {};    ///< The files that were written, in order.
    QList<QUrl> unopened = {}; ///< The files that were left out.
};

/// Turns every page of each file clockwise by 90 degrees, by its rotation entry alone. The old
/// files can be brought back by `AppModel::undoEdit`. Raw pages, which aren't turned, are removed.
Outcome rotate(AppModel &model, const QList<QUrl> &files);

/// Puts the pages of all files, in the order of the files' names, into a new one in the output
/// folder. The message for fewer than two files is `tooFewToMerge`, and nothing is done.
Outcome merge(AppModel &model, QList<QUrl> files);
[[nodiscard]] QString tooFewToMerge();

/// Writes each page of each file with several to a file of its own in the output folder, in place
/// of one that has the name of the page. Files with one page are left alone.
Outcome split(AppModel &model, const QList<QUrl> &files);

/// What renaming came to.
struct Renaming {
    QUrl file;       ///< Where the scan is now.
    QString problem; ///< Why it kept its name, for the user; empty if it has the new one.
};

/// Gives a scan another name in its folder, and its raw pages and backup with it. Blanks around
/// `name` and a ".pdf" behind it don't count; the file keeps the extension that it has. Never over
/// another scan, and not by half: where the raw pages can't follow, the file goes back.
Renaming rename(AppModel &model, const QUrl &file, const QString &name);

/// The message when files couldn't be written.
[[nodiscard]] QString notWritable();

/// Where a new file of this kind goes: a name with the local time in the output folder.
[[nodiscard]] QUrl newURL(const AppModel &model, const QString &stem);

} // namespace velmor::ScanFiles
