#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmor {

/// One command to the scanner engine.
///
/// A plain value, written and never read back. A field that is unset is left out of the message;
/// the fields bear the names of their JSON keys, but for `autoSettings`, whose key is "auto".
struct EngineCommand {
    /// The image processing that the engine carries out on each page.
    struct Auto {
        bool crop = false;
        std::optional<QString> cropWidthMode = {};
        std::optional<QString> cropHeightMode = {};
        std::optional<double> cropFixedWidthMm = {};  ///< Millimetres.
        std::optional<double> cropFixedHeightMm = {}; ///< Millimetres.
        bool deskew = false;
        bool cleanBackground = false;
        bool blankRemoval = false;
        bool autoLevels = false;
        bool ocr = false;
        QString ocrLanguage = {};
        int brightness = 0; ///< -1000 to 1000, 0 for no change.
        int contrast = 0;   ///< -1000 to 1000, 0 for no change.

        bool operator==(const Auto &) const = default;
    };

    /// Where the results go.
    struct Output {
        QString path;   ///< Absolute.
        QString format; ///< "images" or "png".

        bool operator==(const Output &) const = default;
    };

    QString cmd = {}; ///< The command word, in every message.
    std::optional<QString> deviceId = {};
    std::optional<QString> input = {}; ///< Absolute path of an image.
    std::optional<QString> driver = {};
    std::optional<QString> source = {};
    std::optional<int> dpi = {};
    std::optional<QString> colorMode = {};
    std::optional<bool> batchWaitForPaper = {};
    std::optional<Auto> autoSettings = {};
    std::optional<Output> output = {};

    /// The message: one JSON object in UTF-8, on one line, without the closing line feed. Empty
    /// if the command cannot be written, which is when a measure in it is not a finite number.
    [[nodiscard]] QByteArray encoded() const;

    bool operator==(const EngineCommand &) const = default;
};

} // namespace velmor
