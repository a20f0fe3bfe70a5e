#pragma once

#include <QLockFile>
#include <QObject>
#include <QTemporaryDir>

#include <memory>

namespace velmor {

/// Where an import is prepared: a folder beside the raw pages, on the scans' own disk, so that what
/// is finished only has to be moved. It goes with its contents when the import is over, and with
/// its parent. A lock in it tells other imports that it is in use.
class StagingFolder : public QObject {
public:
    StagingFolder(QObject *parent, const QString &outputFolder);

    [[nodiscard]] bool isValid() const { return m_folder.isValid(); }
    [[nodiscard]] QString filePath(const QString &name) const { return m_folder.filePath(name); }

    /// Removes the folders that imports left behind whose process was ended: those whose lock is
    /// held by no process that runs, and after a day those without a lock. One that was locked on
    /// another computer stays. Any thread.
    static void removeAbandoned(const QString &outputFolder);

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QLockFile> m_lock; ///< Opened before the folder goes.
};

} // namespace velmor
