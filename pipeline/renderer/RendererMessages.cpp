#include "pipeline/renderer/RendererMessages.h"

#include "pipeline/workers/MessageCoding.h"

#include <cmath>

namespace velmor {

namespace {

void require(QDataStream &stream, bool condition)
{
    if (!condition)
        stream.setStatus(QDataStream::ReadCorruptData);
}

bool isFinite(const QRectF &box)
{
    return std::isfinite(box.x()) && std::isfinite(box.y()) && std::isfinite(box.width()) &&
           std::isfinite(box.height());
}

} // namespace

// In this namespace, where the coding of messages finds them by their arguments.

static QDataStream &operator<<(QDataStream &stream, const DrawRequest &request)
{
    return stream << request.pdf << request.size;
}

static QDataStream &operator>>(QDataStream &stream, DrawRequest &request)
{
    stream >> request.pdf >> request.size;
    require(stream, !request.size.isEmpty());
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const PageTextRequest &request)
{
    return stream << request.pdf << request.start << request.length;
}

static QDataStream &operator>>(QDataStream &stream, PageTextRequest &request)
{
    stream >> request.pdf >> request.start >> request.length;
    require(stream, request.start >= 0 && request.length >= -1);
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const TextPositionRequest &request)
{
    return stream << request.pdf << request.start << request.place;
}

static QDataStream &operator>>(QDataStream &stream, TextPositionRequest &request)
{
    return stream >> request.pdf >> request.start >> request.place;
}

static QDataStream &operator<<(QDataStream &stream, const NoPageAnswer &)
{
    return stream;
}

static QDataStream &operator>>(QDataStream &stream, NoPageAnswer &)
{
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const DrawnAnswer &answer)
{
    return stream << answer.size;
}

static QDataStream &operator>>(QDataStream &stream, DrawnAnswer &answer)
{
    stream >> answer.size;
    require(stream, !answer.size.isEmpty());
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const PageTextAnswer &answer)
{
    stream << answer.text;
    MessageCoding::writeList(stream, answer.boxes);
    return stream;
}

static QDataStream &operator>>(QDataStream &stream, PageTextAnswer &answer)
{
    stream >> answer.text;
    answer.boxes = MessageCoding::readList<QList<QRectF>>(stream);
    for (const QRectF &box : std::as_const(answer.boxes))
        require(stream, isFinite(box));
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const TextPositionAnswer &answer)
{
    return stream << answer.position;
}

static QDataStream &operator>>(QDataStream &stream, TextPositionAnswer &answer)
{
    stream >> answer.position;
    require(stream, answer.position >= 0);
    return stream;
}

QByteArray encode(const RendererRequest &request)
{
    return MessageCoding::encode(request);
}

QByteArray encode(const RendererAnswer &answer)
{
    return MessageCoding::encode(answer);
}

std::optional<RendererRequest> decodeRendererRequest(const QByteArray &frame)
{
    return MessageCoding::decode<RendererRequest>(frame);
}

std::optional<RendererAnswer> decodeRendererAnswer(const QByteArray &frame)
{
    return MessageCoding::decode<RendererAnswer>(frame);
}

} // namespace velmor
