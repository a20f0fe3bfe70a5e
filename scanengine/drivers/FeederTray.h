#pragma once

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace scanengine {

/// An image file in a feeder's folder, at one state of its content.
struct PaperFile {
    QString path;
    qint64 bytes = 0;
    QDateTime modified;

    bool operator==(const PaperFile &) const = default;
};

/// `path` as it is now; nothing when it is no file, or none any more.
[[nodiscard]] std::optional<PaperFile> paperFileAt(const QString &path);

/// The image files of a folder as a stack of paper, in natural order of their names. A file that
/// was handed out is used up until it is written again.
///
/// Hidden files and other kinds of files are not paper.
class FeederTray {
public:
    explicit FeederTray(const QString &folder) : m_folder(folder) {}

    /// Makes the stack anew from what lies in the folder and is not used up. False if the folder
    /// can't be read.
    [[nodiscard]] bool reload();

    /// The file on top of the stack.
    [[nodiscard]] std::optional<PaperFile> top() const;

    /// Takes the file on top off the stack. `content` is the state of it that is being used up.
    void take(const PaperFile &content);

private:
    QString m_folder;
    QList<PaperFile> m_stack;
    QHash<QString, PaperFile> m_usedUp;
};

} // namespace scanengine
