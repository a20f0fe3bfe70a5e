#include "model/ScanFiles.h"

#include "pipeline/PdfDocument.h"
#include "pipeline/RawStore.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace velmor::ScanFiles {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(velmor::ScanFiles)
};

QString inOutputFolder(const AppModel &model, const QString &name)
{
    return QDir(model.settings().outputFolder.toLocalFile()).filePath(name);
}

/// The message of success, unless a file failed to be written.
void conclude(Outcome &outcome, const QString &success)
{
    outcome.message = outcome.isWritten ? success : notWritable();
}

/// Writes a document that isn't an edit of the file at `url`, should one be there: neither that
/// one's raw pages nor its backup belong to it.
void writeNew(AppModel &model, const PdfDocument &document, const QUrl &url, Outcome &outcome)
{
    if (!model.write(document, url)) {
        outcome.isWritten = false;
        return;
    }
    RawStore::remove(url);
    model.forgetBackup(url);
    outcome.saved.append(url);
}

} // namespace

Outcome rotate(AppModel &model, const QList<QUrl> &files)
{
    Outcome outcome;
    for (const QUrl &file : files) {
        std::optional<PdfDocument> document = PdfDocument::open(file);
        if (!document) {
            outcome.unopened.append(file);
            continue;
        }
        for (int index = 0; index < document->pageCount(); ++index) {
            if (std::optional<PdfPage> page = document->page(index))
                page->setRotation(page->rotation() + 90);
        }
        if (model.writeWithBackup(*document, file))
            outcome.saved.append(file);
        else
            outcome.isWritten = false;
        RawStore::remove(file);
    }
    conclude(outcome, Texts::tr("Rotated"));
    return outcome;
}

Outcome merge(AppModel &model, QList<QUrl> files)
{
    Outcome outcome;
    if (files.size() < 2) {
        outcome.message = tooFewToMerge();
        return outcome;
    }
    std::ranges::stable_sort(files, {}, [](const QUrl &file) { return file.fileName(); });
    PdfDocument merged;
    for (const QUrl &file : std::as_const(files)) {
        if (const std::optional<PdfDocument> document = PdfDocument::open(file))
            merged.appendPages(*document, 0, document->pageCount());
        else
            outcome.unopened.append(file);
    }
    if (merged.pageCount() > 0)
        writeNew(model, merged, newURL(model, QStringLiteral("Merged")), outcome);
    else
        outcome.isWritten = false;
    conclude(outcome, Texts::tr("Merged %n scans", nullptr, static_cast<int>(files.size())));
    return outcome;
}

QString tooFewToMerge()
{
    return Texts::tr("Select 2+ scans to merge");
}

Outcome split(AppModel &model, const QList<QUrl> &files)
{
    Outcome outcome;
    bool didSplit = false;
    for (const QUrl &file : files) {
        const std::optional<PdfDocument> document = PdfDocument::open(file);
        if (!document) {
            outcome.unopened.append(file);
            continue;
        }
        const int pages = document->pageCount();
        if (pages <= 1)
            continue;
        didSplit = true;
        const QString stem = QFileInfo(file.toLocalFile()).completeBaseName();
        for (int index = 0; index < pages; ++index) {
            const QString name = QStringLiteral("%1_p%2.pdf").arg(stem, QString::number(index + 1));
            PdfDocument single;
            if (single.appendPages(*document, index, 1) == 1)
                writeNew(model, single, QUrl::fromLocalFile(inOutputFolder(model, name)), outcome);
            else
                outcome.isWritten = false;
        }
    }
    if (didSplit)
        conclude(outcome, Texts::tr("Split into pages"));
    else
        outcome.message = Texts::tr("Select a multi-page PDF to split");
    return outcome;
}

QString notWritable()
{
    return Texts::tr("Couldn't write — folder isn't writable");
}

QUrl newURL(const AppModel &model, const QString &stem)
{
    const QString now = QDateTime::currentDateTime().toString(u"yyyy-MM-dd_HHmmss");
    return QUrl::fromLocalFile(inOutputFolder(model, stem + u'_' + now + QStringLiteral(".pdf")));
}

} // namespace velmor::ScanFiles
