#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

namespace velmor {

/// Tells when the files of a folder come, go or are replaced, whoever does it. Changes that follow
/// each other closely are told once, and at the latest a second after the first. While the folder
/// isn't there, its coming is waited for in the nearest folder above it that is. Main thread.
class FolderWatch : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds quiet{250};
    static constexpr std::chrono::milliseconds longestDelay{1000};

    explicit FolderWatch(QObject *parent = nullptr);

    void setFolder(const QString &path);

Q_SIGNALS:
    void changed();

private:
    void watch();
    void notice();
    void tell();

    QString m_folder;
    QFileSystemWatcher m_watcher;
    QTimer m_quiet;
    QTimer m_latest;
};

} // namespace velmor
