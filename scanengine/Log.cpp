#include "scanengine/Log.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace scanengine {

Q_LOGGING_CATEGORY(logging, "scanengine", QtWarningMsg)

bool logTo(const QString &path)
{
    // Appending keeps the lines of several processes apart.
    const int file = ::open(QFile::encodeName(path).constData(),
                            O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    const bool isOpen = ::dup2(file, STDERR_FILENO) >= 0;
    ::close(file);
    if (!isOpen)
        return false;
    qputenv("QT_LOGGING_TO_CONSOLE", "1");
    qSetMessagePattern(QStringLiteral("[%{time hh:mm:ss.zzz}] [%{category}] %{message}"));
    QLoggingCategory::setFilterRules(QStringLiteral("scanengine=true"));
    return true;
}

bool isLogging()
{
    return logging().isDebugEnabled();
}

} // namespace scanengine
