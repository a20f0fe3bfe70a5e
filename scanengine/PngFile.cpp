#include "scanengine/PngFile.h"

#include "scanengine/PngEncoder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace scanengine {
namespace {

constexpr int mostNumbersTried = 1000;

Fault notSaved(const QString &folder, const QString &reason)
{
    return {QStringLiteral("The page could not be saved in \"%1\": %2. Make room there or choose "
                           "another folder.")
                .arg(folder, reason)};
}

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

/// A file under a hidden name of its own that is removed again unless it is renamed. Two engines
/// may save pages of one name in one folder.
class UnfinishedFile {
public:
    explicit UnfinishedFile(const QString &place) : m_info(place)
    {
        const QString number = QString::number(QRandomGenerator::system()->generate(), 16);
        m_file.setFileName(m_info.dir().filePath(u'.' + m_info.fileName() + u'.' + number +
                                                 QStringLiteral(".part")));
    }
    ~UnfinishedFile()
    {
        if (m_isMade)
            m_file.remove();
    }
    UnfinishedFile(const UnfinishedFile &) = delete;
    UnfinishedFile &operator=(const UnfinishedFile &) = delete;

    std::optional<Fault> write(const QImage &image, Flushing flushing)
    {
        m_isMade = m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly);
        if (!m_isMade)
            return notSaved(m_info.path(), m_file.errorString());
        // Only after that is it known that a full disk or a server at its quota took everything.
        const bool isWritten = writePng(image, m_file) && m_file.flush() &&
                               (flushing == Flushing::bySystem || ::fsync(m_file.handle()) == 0);
        m_file.close();
        if (!isWritten)
            return notSaved(m_info.path(),
                            QStringLiteral("writing failed, perhaps because the disk is full"));
        return std::nullopt;
    }

    [[nodiscard]] QByteArray path() const { return QFile::encodeName(m_file.fileName()); }

private:
    QFileInfo m_info;
    QFile m_file;
    bool m_isMade = false;
};

/// Renames a file unless `to` exists; 0 or the error number. Not every file system can rename on
/// that condition, but then it can link.
int renameToFreeName(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (::link(from.constData(), to.constData()) != 0)
        return errno;
    return ::unlink(from.constData()) == 0 ? 0 : errno;
}

} // namespace

std::optional<Fault> replacePng(const QImage &image, const QString &path, Flushing flushing)
{
    UnfinishedFile file(path);
    if (auto fault = file.write(image, flushing))
        return fault;
    if (std::rename(file.path().constData(), QFile::encodeName(path).constData()) != 0)
        return notSaved(QFileInfo(path).path(), reasonOf(errno));
    return std::nullopt;
}

Result<QString> createPng(const QImage &image, const QString &folder, const QString &stem)
{
    const QDir place(folder);
    UnfinishedFile file(place.filePath(stem + QStringLiteral(".png")));
    if (const auto fault = file.write(image, Flushing::atOnce))
        return *fault;
    for (int number = 1; number <= mostNumbersTried; ++number) {
        const QString suffix = number == 1 ? QString() : QStringLiteral(" (%1)").arg(number);
        QString path = place.filePath(stem + suffix + QStringLiteral(".png"));
        const int error = renameToFreeName(file.path(), QFile::encodeName(path));
        if (error == 0)
            return path;
        if (error != EEXIST)
            return notSaved(folder, reasonOf(error));
    }
    return notSaved(folder, QStringLiteral("there are too many pages of this name"));
}

} // namespace scanengine
