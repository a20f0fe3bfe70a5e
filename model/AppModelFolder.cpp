#include "model/AppModel.h"
#include "model/FolderBookmark.h"
#include "model/ScanDate.h"
#include "pipeline/PdfDocument.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace velmor {

namespace {

/// Where the chosen folder's bookmark is kept.
const QString bookmarkKey = QStringLiteral("outputFolderBookmark");

} // namespace

void AppModel::setOutputFolder(const QUrl &folder)
{
    if (const std::optional<QByteArray> bookmark = folderBookmark(folder))
        m_store.setValue(bookmarkKey, *bookmark);
    ScanSettings settings = m_settings;
    settings.outputFolder = folder;
    setSettings(settings);
    ensureOutputFolder();
    loadResults();
}

void AppModel::restoreFolderAccess()
{
    const auto folder = bookmarkedFolder(m_store.value(bookmarkKey).toByteArray());
    if (!folder)
        return;
    ScanSettings settings = m_settings;
    settings.outputFolder = *folder;
    setSettings(settings);
}

void AppModel::ensureOutputFolder() const
{
    // A folder that can't be made shows when something is to be written there.
    QDir().mkpath(m_settings.outputFolder.toLocalFile());
}

void AppModel::loadResults()
{
    const QDir folder(m_settings.outputFolder.toLocalFile());
    QList<ScanResult> results;
    for (const QFileInfo &entry :
         folder.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (entry.suffix().toLower() != u"pdf")
            continue;
        const QUrl url = QUrl::fromLocalFile(entry.absoluteFilePath());
        results.append({url, dateOf(url)});
    }
    std::ranges::stable_sort(results, std::ranges::greater(), &ScanResult::date);
    assign(m_results, results, &AppModel::resultsChanged);
}

QDateTime AppModel::dateOf(const QUrl &url) const
{
    const auto remembered = m_rememberedDates.constFind(url);
    return remembered != m_rememberedDates.cend() ? *remembered
                                                  : scanDate(QFileInfo(url.toLocalFile()));
}

bool AppModel::write(const PdfDocument &document, const QUrl &url)
{
    return replaceFile(url, [&document](QIODevice &file) { return document.write(file); });
}

bool AppModel::replaceFile(const QUrl &url, const std::function<bool(QIODevice &)> &writeContent)
{
    const QString path = url.toLocalFile();
    const std::optional<QDateTime> date =
        QFileInfo::exists(path) ? std::optional(dateOf(url)) : std::nullopt;
    QSaveFile file(path);
    // The file keeps its old content until it is replaced by a whole new one. What is still in the
    // buffer is written before that, as a disk that fills up then would go unnoticed.
    if (!file.open(QIODevice::WriteOnly) || !writeContent(file) || !file.flush()) {
        file.cancelWriting();
        return false;
    }
    const bool isDateKept = !date || keepScanDate(file.handle(), *date);
    if (!file.commit())
        return false;
    // Where files can't carry their date, the scan keeps its place for as long as this runs.
    if (!isDateKept)
        m_rememberedDates.insert(url, *date);
    return true;
}

} // namespace velmor
