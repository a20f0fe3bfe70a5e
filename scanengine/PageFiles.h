#pragma once

#include "scanengine/Result.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <optional>

namespace scanengine {

/// The page images of one scan: PNG files "<stem> page 001.png" beside the scan's output file,
/// counted from 1, in the order they are saved.
class PageFiles {
public:
    /// `outputPath` is absolute; it gives the folder and the stem and is not touched itself.
    explicit PageFiles(const QString &outputPath);

    /// Saves one more page, or answers why it could not.
    [[nodiscard]] std::optional<Fault> save(const QImage &page);

    /// The pages saved so far, absolute.
    [[nodiscard]] const QStringList &paths() const { return m_paths; }

private:
    QString m_folder;
    QString m_stem;
    QStringList m_paths;
};

} // namespace scanengine
