#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <optional>
#include <variant>

/// Messages as the content of frames.
///
/// A message is a variant; its frame is the index of its alternative, then that alternative's
/// fields, by their operators on `QDataStream`. An operator that reads sets the stream's status for
/// fields that make no sense. Decoding answers a whole message or nothing, whatever it is given.
namespace velmor::MessageCoding {

template <typename List> void writeList(QDataStream &stream, const List &items)
{
    stream << static_cast<quint32>(items.size());
    for (const auto &item : items)
        stream << item;
}

/// Reads no further than the stream is sound. Qt's own reading of a list reserves room for as many
/// items as the count claims.
template <typename List> List readList(QDataStream &stream)
{
    quint32 count = 0;
    stream >> count;
    List items;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i)
        stream >> items.emplace_back();
    return items;
}

template <typename... Alternatives> QByteArray encode(const std::variant<Alternatives...> &message)
{
    QByteArray frame;
    QDataStream stream(&frame, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << static_cast<quint8>(message.index());
    std::visit([&](const auto &fields) { stream << fields; }, message);
    return frame;
}

template <typename Alternative, typename Variant>
bool readAlternative(QDataStream &stream, Variant &message)
{
    Alternative fields;
    stream >> fields;
    message = std::move(fields);
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

template <typename... Alternatives>
std::optional<std::variant<Alternatives...>> decodeOneOf(const QByteArray &frame,
                                                         std::variant<Alternatives...> message)
{
    QDataStream stream(frame);
    stream.setVersion(QDataStream::Qt_6_4);
    quint8 wanted = 0;
    stream >> wanted;
    quint8 index = 0;
    const bool read =
        ((wanted == index++ && readAlternative<Alternatives>(stream, message)) || ...);
    if (!read)
        return std::nullopt;
    return message;
}

template <typename Variant> std::optional<Variant> decode(const QByteArray &frame)
{
    return decodeOneOf(frame, Variant());
}

} // namespace velmor::MessageCoding
