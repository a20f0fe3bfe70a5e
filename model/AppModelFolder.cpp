#include "model/AppModel.h"
#include "pipeline/PdfDocument.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace velmor {

namespace {

/// Where the chosen folder is remembered: the bytes of its path.
const QString bookmarkKey = QStringLiteral("outputFolderBookmark");

} // namespace

void AppModel::setOutputFolder(const QUrl &folder)
{
    const QFileInfo info(folder.toLocalFile());
    if (info.isDir())
        m_store.setValue(bookmarkKey, QFile::encodeName(info.absoluteFilePath()));
    ScanSettings settings = m_settings;
    settings.outputFolder = folder;
    setSettings(settings);
    ensureOutputFolder();
    loadResults();
}

void AppModel::restoreFolderAccess()
{
    const QString path = QFile::decodeName(m_store.value(bookmarkKey).toByteArray());
    if (path.isEmpty() || !QDir::isAbsolutePath(path) || !QFileInfo(path).isDir())
        return;
    ScanSettings settings = m_settings;
    settings.outputFolder = QUrl::fromLocalFile(path);
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
        const QDateTime made = entry.birthTime();
        results.append({QUrl::fromLocalFile(entry.absoluteFilePath()),
                        made.isValid() ? made : QDateTime::currentDateTime()});
    }
    std::ranges::stable_sort(results, std::ranges::greater(), &ScanResult::date);
    assign(m_results, results, &AppModel::resultsChanged);
}

bool AppModel::write(const PdfDocument &document, const QUrl &url)
{
    QSaveFile file(url.toLocalFile());
    // The file keeps its old content until it is replaced by a whole new one. What is still in the
    // buffer is written before that, as a disk that fills up then would go unnoticed.
    if (!file.open(QIODevice::WriteOnly) || !document.write(file) || !file.flush()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace velmor
