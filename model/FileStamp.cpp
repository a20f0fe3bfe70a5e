#include "model/FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace velmor {

FileStamp stampOf(const QUrl &url)
{
    struct stat file{};
    if (::stat(QFile::encodeName(url.toLocalFile()).constData(), &file) != 0)
        return {};
    constexpr qint64 second = 1'000'000'000;
    return {file.st_mtim.tv_sec * second + file.st_mtim.tv_nsec, file.st_size, file.st_ino};
}

} // namespace velmor
