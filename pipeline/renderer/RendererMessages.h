#pragma once

#include <QByteArray>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QString>

#include <optional>
#include <variant>

/// What the application and the worker that draws PDF pages say to each other.
///
/// One request, one answer, in turn; each is the content of one frame (see FrameChannel.h), and the
/// pixels of a picture are a second one. A request brings a PDF file and is about its first page.
/// Places are in points from the origin of the page space, y downwards, the page's rotation not
/// applied. Decoding answers a whole message or nothing, whatever it is given.
namespace velmor {

/// Asks for a picture of the page as shown, rotation included, on white.
struct DrawRequest {
    QByteArray pdf;
    QSize size; ///< In pixels; the page is stretched to it.

    bool operator==(const DrawRequest &) const = default;
};

/// Asks for the page's text.
struct PageTextRequest {
    QByteArray pdf;
    int start = 0;
    int length = -1; ///< In characters; -1 for all of the text.

    bool operator==(const PageTextRequest &) const = default;
};

/// Asks how many characters stand before `place`, the first one being at `start`.
struct TextPositionRequest {
    QByteArray pdf;
    QPointF start;
    QPointF place;

    bool operator==(const TextPositionRequest &) const = default;
};

using RendererRequest = std::variant<DrawRequest, PageTextRequest, TextPositionRequest>;

/// The picture is drawn; the next frame has its pixels, `pictureBytes(size)` of them: row by row
/// from the top, four bytes each as `QImage::Format_RGB32` has them, without padding.
struct DrawnAnswer {
    QSize size;

    bool operator==(const DrawnAnswer &) const = default;
};

struct PageTextAnswer {
    QString text; ///< Lines are ended by "\r\n".
    QList<QRectF> boxes;

    bool operator==(const PageTextAnswer &) const = default;
};

struct TextPositionAnswer {
    int position = 0;

    bool operator==(const TextPositionAnswer &) const = default;
};

/// Nothing: the page can't be drawn or read.
struct NoPageAnswer {
    bool operator==(const NoPageAnswer &) const = default;
};

using RendererAnswer = std::variant<NoPageAnswer, DrawnAnswer, PageTextAnswer, TextPositionAnswer>;

[[nodiscard]] QByteArray encode(const RendererRequest &request);
[[nodiscard]] QByteArray encode(const RendererAnswer &answer);
[[nodiscard]] std::optional<RendererRequest> decodeRendererRequest(const QByteArray &frame);
[[nodiscard]] std::optional<RendererAnswer> decodeRendererAnswer(const QByteArray &frame);

/// The bytes of a picture of this size.
[[nodiscard]] constexpr qint64 pictureBytes(QSize size)
{
    return qint64{4} * size.width() * size.height();
}

/// The longest frames in bytes that either side takes: a page of a document of the largest size,
/// and more text than any page holds.
inline constexpr qint64 maxRendererRequest = (qint64{1} << 32) - 1;
inline constexpr qint64 maxRendererAnswer = 64'000'000;

} // namespace velmor
