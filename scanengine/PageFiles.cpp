#include "scanengine/PageFiles.h"

#include "scanengine/PngFile.h"

#include <QFile>
#include <QFileInfo>

namespace scanengine {
namespace {

/// Room for the page's number and the temporary name within the 255 bytes of a file name.
constexpr qsizetype longestStemBytes = 190;

QString shortened(QString stem)
{
    while (QFile::encodeName(stem).size() > longestStemBytes)
        stem.chop(stem.back().isLowSurrogate() ? 2 : 1);
    return stem;
}

} // namespace

PageFiles::PageFiles(const QString &outputPath)
    : m_folder(QFileInfo(outputPath).absolutePath()),
      m_stem(shortened(QFileInfo(outputPath).completeBaseName()))
{
}

std::optional<Fault> PageFiles::save(const QImage &page)
{
    const QString stem =
        m_stem + QStringLiteral(" page %1").arg(m_paths.size() + 1, 3, 10, QChar(u'0'));
    const Result<QString> path = createPng(page, m_folder, stem);
    if (const Fault *fault = faultOf(path))
        return *fault;
    m_paths.append(std::get<QString>(path));
    return std::nullopt;
}

} // namespace scanengine
