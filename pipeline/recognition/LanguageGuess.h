#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace velmor {

/// True when the common little words of `language`, a model's name such as "deu", are known.
[[nodiscard]] bool hasCommonWords(const QString &language);

/// The one of `languages` that a text is clearly written in, judged by its common little words,
/// which survive being read with another language's model of the same script. Nothing when none
/// stands out. Pure.
[[nodiscard]] std::optional<QString> guessLanguage(QStringView text, const QStringList &languages);

/// The models of `installed` that may read a script, named as Tesseract names it ("Latin", "Han").
/// Empty when none is known to.
[[nodiscard]] QStringList languagesForScript(const QString &script, const QStringList &installed);

/// The models of `installed` that read a single language: not those for layout, upright setting
/// or whole scripts.
[[nodiscard]] QStringList readingLanguages(const QStringList &installed);

/// The model for a locale's language, such as "deu" for "de_AT"; empty when there is none known.
[[nodiscard]] QString languageForLocale(const QString &locale);

} // namespace velmor
