#include "scanengine/drivers/FeederTray.h"

#include "scanengine/drivers/NaturalOrder.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace scanengine {

std::optional<PaperFile> paperFileAt(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return std::nullopt;
    return PaperFile{path, info.size(), info.lastModified()};
}

bool FeederTray::reload()
{
    const QDir folder(m_folder);
    if (!folder.isReadable())
        return false;
    static const QStringList kinds{QStringLiteral("*.png"), QStringLiteral("*.jpg"),
                                   QStringLiteral("*.jpeg"), QStringLiteral("*.tif"),
                                   QStringLiteral("*.tiff")};
    QStringList names = folder.entryList(kinds, QDir::Files, QDir::Unsorted);
    std::sort(names.begin(), names.end(), naturallyBefore);

    m_stack.clear();
    for (const QString &name : names) {
        const auto file = paperFileAt(folder.filePath(name));
        if (file && m_usedUp.value(file->path) != *file)
            m_stack.append(*file);
    }
    return true;
}

std::optional<PaperFile> FeederTray::top() const
{
    return m_stack.isEmpty() ? std::nullopt : std::optional(m_stack.front());
}

void FeederTray::take(const PaperFile &content)
{
    m_stack.removeFirst();
    m_usedUp.insert(content.path, content);
}

} // namespace scanengine
