#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace velmor {

/// Longest `EngineEvent::message` that is kept, in UTF-16 units, the ellipsis of a cut one
/// included.
inline constexpr qsizetype maximumMessageLength = 4000;

/// One event from the scanner engine.
///
/// A plain value, read and never written. Every field is named as its JSON key; an optional one is
/// unset when the key was left out or null. What the fields say is the engine's word alone: paths
/// and counts in them are checked by whoever uses them.
struct EngineEvent {
    /// One scanner, as the engine lists it.
    struct Device {
        QString id; ///< Names the scanner in commands.
        QString name;
        QString driver;

        bool operator==(const Device &) const = default;
    };

    QString event = {}; ///< The event word, known or not.
    std::optional<QString> version = {};
    std::optional<QString> message =
        {};                        ///< At most `maximumMessageLength`; a longer one ends in "…".
    std::optional<int> index = {}; ///< Page number, counted from 1.
    std::optional<int> pages = {};
    std::optional<QString> file = {};
    std::optional<QStringList> files = {}; ///< Page images, in page order.
    std::optional<QList<Device>> devices = {};

    /// The event of one message without its line feed; carriage returns count as white space.
    ///
    /// Nothing if the line is not one JSON object in valid UTF-8, if it lacks `event`, if a known
    /// key holds a value of another type (a fraction or a number past 32 bits for a whole number),
    /// or if a device lacks one of its three texts. Unknown keys are ignored.
    [[nodiscard]] static std::optional<EngineEvent> decode(const QByteArray &line);

    bool operator==(const EngineEvent &) const = default;
};

[[nodiscard]] size_t qHash(const EngineEvent::Device &device, size_t seed = 0) noexcept;

} // namespace velmor
