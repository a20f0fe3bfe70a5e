#include "model/ScanDate.h"

#include <QByteArray>
#include <QFile>

#include <array>
#include <sys/xattr.h>

namespace velmor {

namespace {

/// Holds the moment in ISO 8601, in UTC, with milliseconds.
constexpr const char *attribute = "user.velmor.scanned";

QDateTime keptDate(const QString &path)
{
    std::array<char, 64> text{};
    const ssize_t length =
        getxattr(QFile::encodeName(path).constData(), attribute, text.data(), text.size());
    if (length <= 0)
        return {};
    return QDateTime::fromString(QString::fromLatin1(text.data(), length), Qt::ISODateWithMs);
}

} // namespace

QDateTime scanDate(const QFileInfo &file)
{
    const QDateTime kept = keptDate(file.filePath());
    if (kept.isValid())
        return kept;
    const QDateTime made = file.birthTime();
    return made.isValid() ? made : QDateTime::currentDateTime();
}

bool keepScanDate(int descriptor, const QDateTime &date)
{
    const QByteArray text = date.toUTC().toString(Qt::ISODateWithMs).toLatin1();
    return fsetxattr(descriptor, attribute, text.constData(), static_cast<size_t>(text.size()),
                     0) == 0;
}

} // namespace velmor
