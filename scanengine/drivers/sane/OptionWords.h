#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the words mean that backends have for their sources and modes. Backends share no
/// vocabulary: "ADF Duplex" is also "Duplex" and "Automatic Document Feeder(left aligned,Duplex)".
namespace scanengine {

/// What paper a source of a device takes.
enum class SourceKind {
    flatbed,
    feeder,
    feederDuplex, ///< Both sides of each sheet.
    other,        ///< Slides, cards, back sides alone, or a word that isn't known.
};

[[nodiscard]] SourceKind sourceKind(const QString &word);

/// The word for both sides of a sheet among the words of an option, if there is one.
[[nodiscard]] std::optional<QString> duplexWord(const QStringList &words);

/// What colours a mode keeps.
enum class Tones { blackWhite, gray, color };

/// What the mode `word` keeps, if that is known.
[[nodiscard]] std::optional<Tones> tonesOf(const QString &word);

/// The mode among `words` that keeps `tones` best: plain 8 bits a sample before finer, faster or
/// dithered variants. Nothing if none keeps them.
[[nodiscard]] std::optional<QString> modeFor(Tones tones, const QStringList &words);

} // namespace scanengine
