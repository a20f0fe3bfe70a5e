#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

/// What the application and the text recognition worker say to each other.
///
/// One request, one answer, in turn. Each is the content of one frame (see FrameChannel.h). Both
/// programs come from one build, so there is no version; still neither trusts the other's bytes:
/// decoding answers a whole message or nothing, whatever it is given, and takes no more memory than
/// a small multiple of the frame.
namespace velmor {

/// Eight-bit grey pixels, row by row from the top, without padding; 0 is black.
struct GreyPixels {
    QSize size;
    QByteArray bytes; ///< Exactly width times height.

    bool operator==(const GreyPixels &) const = default;
};

/// Asks for the names of the installed language models.
struct LanguagesRequest {
    bool operator==(const LanguagesRequest &) const = default;
};

/// Asks for the text of an upright page.
struct TextRequest {
    QString language; ///< A model's name, such as "eng".
    int dpi = 300;    ///< Of the pixels; a hint for the layout analysis.
    GreyPixels page;

    bool operator==(const TextRequest &) const = default;
};

/// Asks how a page lies and what script it is set in.
struct OrientationRequest {
    int dpi = 300;
    GreyPixels page;

    bool operator==(const OrientationRequest &) const = default;
};

using RecognizerRequest = std::variant<LanguagesRequest, TextRequest, OrientationRequest>;

struct LanguagesAnswer {
    QStringList languages; ///< Sorted; "osd" is among them when scripts can be told apart.

    bool operator==(const LanguagesAnswer &) const = default;
};

struct RecognizedWord {
    QString text;          ///< Never empty.
    QRect box;             ///< Pixels of the requested page, origin at the top left.
    double confidence = 0; ///< 0 to 100.

    bool operator==(const RecognizedWord &) const = default;
};

/// The words of one line in reading order; never empty.
using RecognizedWords = std::vector<RecognizedWord>;

struct TextAnswer {
    std::vector<RecognizedWords> lines; ///< In reading order.

    bool operator==(const TextAnswer &) const = default;
};

struct OrientationAnswer {
    /// How far the text is turned clockwise from upright: 0, 90, 180 or 270.
    int degrees = 0;
    double confidence = 0;       ///< 0 and up; 2 is fair, 10 is sure. 0 when nothing was found.
    QString script;              ///< Such as "Latin" or "Han"; empty when nothing was found.
    double scriptConfidence = 0; ///< As `confidence`.

    bool operator==(const OrientationAnswer &) const = default;
};

/// Nothing: the request couldn't be carried out, for example for want of the language's model.
struct FailureAnswer {
    bool operator==(const FailureAnswer &) const = default;
};

using RecognizerAnswer =
    std::variant<FailureAnswer, LanguagesAnswer, TextAnswer, OrientationAnswer>;

[[nodiscard]] QByteArray encode(const RecognizerRequest &request);
[[nodiscard]] QByteArray encode(const RecognizerAnswer &answer);
[[nodiscard]] std::optional<RecognizerRequest> decodeRequest(const QByteArray &frame);
[[nodiscard]] std::optional<RecognizerAnswer> decodeAnswer(const QByteArray &frame);

/// The longest frames in bytes that either side takes: a page of the largest size, and more text
/// than any page holds.
inline constexpr qint64 maxRequestFrame = 300'000'000 + 4096;
inline constexpr qint64 maxAnswerFrame = 32'000'000;

/// No side of a page may be longer, in pixels: the recognition counts in 16 bits.
inline constexpr int maxRecognizedSide = 32'000;

} // namespace velmor
