#include "model/AppModel.h"
#include "model/UndoFolder.h"
#include "pipeline/PdfDocument.h"

#include <QFile>

namespace velmor {

bool AppModel::writeWithBackup(const PdfDocument &document, const QUrl &url)
{
    const QString backup = newBackupPath().value_or(QString());
    forgetBackup(url);
    const bool hasBackup = !backup.isEmpty() && QFile::copy(url.toLocalFile(), backup);
    if (!write(document, url))
        return false;
    if (hasBackup) {
        m_undoBackups.insert(url, backup);
        QSet<QUrl> undoable = m_undoableFiles;
        undoable.insert(url);
        assign(m_undoableFiles, undoable, &AppModel::undoableFilesChanged);
    }
    return true;
}

bool AppModel::undoEdit(const QUrl &url)
{
    if (!m_undoBackups.contains(url))
        return false;
    QFile backup(m_undoBackups.value(url));
    if (!backup.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = backup.readAll();
    if (backup.error() != QFileDevice::NoError || bytes.size() != backup.size())
        return false;
    const auto writeBytes = [&bytes](QIODevice &file) {
        return file.write(bytes) == bytes.size();
    };
    if (!replaceFile(url, writeBytes))
        return false;
    forgetBackup(url);
    return true;
}

void AppModel::forgetBackup(const QUrl &url)
{
    if (!m_undoBackups.contains(url))
        return;
    QFile::remove(m_undoBackups.take(url));
    QSet<QUrl> undoable = m_undoableFiles;
    undoable.remove(url);
    assign(m_undoableFiles, undoable, &AppModel::undoableFilesChanged);
}

void AppModel::followRename(const QUrl &from, const QUrl &to)
{
    forgetBackup(to);
    m_rememberedDates.remove(to);
    if (m_rememberedDates.contains(from))
        m_rememberedDates.insert(to, m_rememberedDates.take(from));
    if (!m_undoBackups.contains(from))
        return;
    m_undoBackups.insert(to, m_undoBackups.take(from));
    QSet<QUrl> undoable = m_undoableFiles;
    undoable.remove(from);
    undoable.insert(to);
    assign(m_undoableFiles, undoable, &AppModel::undoableFilesChanged);
}

} // namespace velmor
