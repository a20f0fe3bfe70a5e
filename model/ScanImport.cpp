#include "model/ScanImport.h"

#include "model/FileMove.h"
#include "model/ImportSources.h"
#include "model/ScanFiles.h"
#include "model/StagingFolder.h"
#include "pipeline/PdfDocument.h"
#include "pipeline/RawStore.h"
#include "pipeline/TextRecognition.h"
#include "pipeline/WithoutExceptions.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QScopeGuard>

#include <utility>

namespace velmor {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(velmor::ScanImport)
};

/// How many names a message lists.
constexpr qsizetype mostNames = 3;
/// The most bytes of a scan's name, so that a number and an extension fit behind it.
constexpr qsizetype longestStem = 240;

/// A document that only has to be moved into its place.
struct StagedPdf {
    QString path;
    QString stem;
};

struct Prepared {
    QList<StagedPdf> pdfs;
    QList<VisionOCR::PageFile> pages;
    QString title; ///< Of the document that the pages make; empty if they have none.
    ImportOutcome outcome;
};

bool hasPages(const QString &path)
{
    const std::optional<PdfDocument> document = PdfDocument::open(QUrl::fromLocalFile(path));
    return document && document->pageCount() > 0;
}

void preparePdf(const QString &path, const QString &outputFolder, const QString &staging,
                Prepared &prepared)
{
    const QFileInfo file(path);
    if (file.canonicalPath() == QFileInfo(outputFolder).canonicalFilePath()) {
        ++prepared.outcome.present;
        return;
    }
    // The copy is looked at, as the original may change meanwhile.
    const QString copy =
        QDir(staging).filePath(QStringLiteral("%1.pdf").arg(prepared.pdfs.size() + 1));
    if (!QFile::copy(path, copy)) {
        QFile readable(path);
        if (readable.open(QIODevice::ReadOnly))
            prepared.outcome.isWritten = false;
        else
            prepared.outcome.unread.append(file.fileName());
        return;
    }
    // As private or public as any new scan, and writable where the original is locked.
    QFile::setPermissions(copy, QFile::permissions(copy) | QFile::ReadOwner | QFile::WriteOwner);
    if (!hasPages(copy)) {
        QFile::remove(copy);
        prepared.outcome.unread.append(file.fileName());
        return;
    }
    prepared.pdfs.append({copy, file.completeBaseName()});
}

void prepareImage(const QString &path, const QString &staging, Prepared &prepared)
{
    switch (stageImage(path, staging, prepared.pages)) {
    case Staging::done:
        break;
    case Staging::unreadable:
        prepared.outcome.unread.append(QFileInfo(path).fileName());
        break;
    case Staging::notWritten:
        prepared.outcome.isWritten = false;
        break;
    }
}

/// Copies everything into `staging`. For a background thread.
Prepared prepare(const QList<QUrl> &files, const QString &outputFolder, const QString &staging)
{
    const ImportSources sources = importSources(files);
    Prepared prepared;
    prepared.title = sources.title;
    prepared.outcome.unread = sources.others;
    for (const QString &path : sources.pdfs)
        preparePdf(path, outputFolder, staging, prepared);
    for (const QString &path : sources.images)
        prepareImage(path, staging, prepared);
    // A document without some of its pages would be taken for the whole.
    if (!prepared.outcome.isWritten)
        prepared.pages.clear();
    return prepared;
}

/// A name that scans can have, made of any.
QString usableStem(QString stem)
{
    while (stem.startsWith(u'.') || stem.startsWith(u' '))
        stem.remove(0, 1);
    while (QFile::encodeName(stem).size() > longestStem)
        stem.chop(stem.size() > 1 && stem.back().isLowSurrogate() ? 2 : 1);
    return stem.isEmpty() ? QStringLiteral("Imported") : stem;
}

/// Whether the folder has a scan of this name, however it is written, which would share raw pages.
bool isTaken(const QDir &folder, const QString &name)
{
    const QStringList names = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    return names.contains(name, Qt::CaseInsensitive);
}

/// Moves a finished document into the output folder, under `stem` or, where that is taken, with
/// the first free number behind it. Its place; nothing if it can't be moved.
std::optional<QUrl> place(AppModel &model, const QString &path, const QString &stem,
                          const QString &outputFolder)
{
    const QDir folder(outputFolder);
    const QString usable = usableStem(stem);
    for (int number = 1;; ++number) {
        const QString numbered =
            number == 1 ? usable : QStringLiteral("%1 %2").arg(usable).arg(number);
        const QString name = numbered + QStringLiteral(".pdf");
        if (isTaken(folder, name))
            continue;
        switch (moveFile(path, folder.filePath(name))) {
        case FileMove::done: {
            const QUrl url = QUrl::fromLocalFile(folder.filePath(name));
            // What belonged to a former scan of this name.
            RawStore::remove(url);
            model.forgetBackup(url);
            return url;
        }
        case FileMove::taken:
            break;
        case FileMove::failed:
            return std::nullopt;
        }
    }
}

QString listed(const QStringList &names)
{
    const QString list = names.mid(0, mostNames).join(QStringLiteral(", "));
    const auto more = static_cast<int>(names.size() - mostNames);
    return more > 0 ? Texts::tr("%1 and %n more", nullptr, more).arg(list) : list;
}

} // namespace

QString ImportOutcome::message() const
{
    QStringList sentences;
    const auto count = static_cast<int>(saved.size());
    if (count > 0)
        sentences.append(count == 1 ? Texts::tr("Imported 1 scan")
                                    : Texts::tr("Imported %n scans", nullptr, count));
    if (!unread.isEmpty())
        sentences.append(Texts::tr("Couldn't read %1").arg(listed(unread)));
    if (!isWritten)
        sentences.append(ScanFiles::notWritable());
    if (!isMade)
        sentences.append(Texts::tr("Some files couldn't be imported"));
    if (present > 0)
        sentences.append(present == 1 ? Texts::tr("1 scan is here already")
                                      : Texts::tr("%n scans are here already", nullptr, present));
    if (count > 0 && !textProblem.isEmpty())
        sentences.append(textProblem);
    return sentences.isEmpty() ? Texts::tr("Nothing to import")
                               : sentences.join(QStringLiteral(". "));
}

QCoro::Task<ImportOutcome> importFiles(QPointer<AppModel> model, QList<QUrl> files,
                                       VisionOCR::Progress progress)
{
    ImportOutcome failed;
    failed.isWritten = false;
    if (!model)
        co_return failed;
    const QString folder = model->settings().outputFolder.toLocalFile();
    const bool ocr = model->settings().ocr;
    const QPointer<StagingFolder> staging(new StagingFolder(model, folder));
    const auto clear = qScopeGuard([staging] { delete staging.data(); });
    if (!staging->isValid())
        co_return failed;

    const QString stagingPath = staging->filePath(QString());
    QFuture<std::optional<Prepared>> preparing = inBackground([files, folder, stagingPath] {
        StagingFolder::removeAbandoned(folder);
        return std::optional(prepare(files, folder, stagingPath));
    });
    const std::optional<Prepared> answer = co_await preparing;
    const Prepared prepared = answer.value_or(Prepared());
    ImportOutcome outcome = prepared.outcome;
    outcome.isMade = answer.has_value();
    const auto settle = [&](const QString &path, const QString &stem) {
        const std::optional<QUrl> url = place(*model, path, stem, folder);
        if (url)
            outcome.saved.append(*url);
        else
            outcome.isWritten = false;
        return url;
    };
    if (!model)
        co_return outcome;
    for (const StagedPdf &pdf : std::as_const(prepared.pdfs))
        settle(pdf.path, pdf.stem);
    if (prepared.pages.isEmpty())
        co_return outcome;

    const QString assembled = QDir(stagingPath).filePath(QStringLiteral("assembled.pdf"));
    // Otherwise the pages couldn't be made.
    bool isTried = false;
    const std::function<bool(const PdfDocument &)> write = [model, assembled,
                                                            &isTried](const PdfDocument &document) {
        isTried = true;
        return model && model->write(document, QUrl::fromLocalFile(assembled));
    };
    const bool isAssembled = co_await VisionOCR::assemblePdf(prepared.pages, ocr, write, progress);
    if (ocr) {
        QFuture<std::optional<QString>> lookUp = inBackground(recognitionProblem);
        const std::optional<QString> problem = co_await lookUp;
        outcome.textProblem = problem.value_or(QString());
    }
    if (!model)
        co_return outcome;
    if (!isAssembled) {
        (isTried ? outcome.isWritten : outcome.isMade) = false;
        co_return outcome;
    }
    const QString untitled = fileStem(ScanFiles::newURL(*model, QStringLiteral("Imported")));
    const auto url = settle(assembled, prepared.title.isEmpty() ? untitled : prepared.title);
    if (!url)
        co_return outcome;
    QStringList raw;
    for (const VisionOCR::PageFile &page : std::as_const(prepared.pages))
        raw.append(page.path);
    RawStore::adopt(raw, *url);
    co_return outcome;
}

} // namespace velmor
