#pragma once

#include <QLatin1StringView>
#include <QStringView>

#include <span>

namespace velmor {

/// What is known about a language's model.
struct LanguageFacts {
    QLatin1StringView name;   ///< The model's, such as "deu".
    QLatin1StringView locale; ///< ISO 639-1, such as "de".
    QLatin1StringView script; ///< As Tesseract names it.
    /// The most common little words, in lower case, parted by single spaces; empty when the
    /// script tells enough.
    QStringView commonWords;
};

[[nodiscard]] std::span<const LanguageFacts> knownLanguages();

} // namespace velmor
