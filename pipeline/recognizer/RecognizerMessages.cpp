#include "pipeline/recognizer/RecognizerMessages.h"

#include <QDataStream>
#include <QIODevice>

namespace velmor {

namespace {

constexpr auto streamVersion = QDataStream::Qt_6_4;

bool isQuarterTurn(int degrees)
{
    return degrees == 0 || degrees == 90 || degrees == 180 || degrees == 270;
}

// Found by the list templates below only when declared before them.
QDataStream &operator<<(QDataStream &stream, const RecognizedWord &word);
QDataStream &operator>>(QDataStream &stream, RecognizedWord &word);
QDataStream &operator<<(QDataStream &stream, const RecognizedWords &words);
QDataStream &operator>>(QDataStream &stream, RecognizedWords &words);

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

QDataStream &operator<<(QDataStream &stream, const GreyPixels &pixels)
{
    return stream << pixels.size << pixels.bytes;
}

QDataStream &operator>>(QDataStream &stream, GreyPixels &pixels)
{
    stream >> pixels.size >> pixels.bytes;
    const QSize size = pixels.size;
    const bool sound = size.width() > 0 && size.height() > 0 && size.width() <= maxRecognizedSide &&
                       size.height() <= maxRecognizedSide &&
                       qint64{size.width()} * size.height() == pixels.bytes.size();
    if (!sound)
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const LanguagesRequest &)
{
    return stream;
}

QDataStream &operator>>(QDataStream &stream, LanguagesRequest &)
{
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const TextRequest &request)
{
    return stream << request.language << request.dpi << request.page;
}

QDataStream &operator>>(QDataStream &stream, TextRequest &request)
{
    return stream >> request.language >> request.dpi >> request.page;
}

QDataStream &operator<<(QDataStream &stream, const OrientationRequest &request)
{
    return stream << request.dpi << request.page;
}

QDataStream &operator>>(QDataStream &stream, OrientationRequest &request)
{
    return stream >> request.dpi >> request.page;
}

QDataStream &operator<<(QDataStream &stream, const FailureAnswer &)
{
    return stream;
}

QDataStream &operator>>(QDataStream &stream, FailureAnswer &)
{
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const LanguagesAnswer &answer)
{
    writeList(stream, answer.languages);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, LanguagesAnswer &answer)
{
    answer.languages = readList<QStringList>(stream);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const RecognizedWord &word)
{
    return stream << word.text << word.box << word.confidence;
}

QDataStream &operator>>(QDataStream &stream, RecognizedWord &word)
{
    stream >> word.text >> word.box >> word.confidence;
    if (word.text.isEmpty() || !word.box.isValid() ||
        !(word.confidence >= 0 && word.confidence <= 100))
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const RecognizedWords &words)
{
    writeList(stream, words);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, RecognizedWords &words)
{
    words = readList<RecognizedWords>(stream);
    if (words.empty())
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const TextAnswer &answer)
{
    writeList(stream, answer.lines);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, TextAnswer &answer)
{
    answer.lines = readList<std::vector<RecognizedWords>>(stream);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const OrientationAnswer &answer)
{
    return stream << answer.degrees << answer.confidence << answer.script
                  << answer.scriptConfidence;
}

QDataStream &operator>>(QDataStream &stream, OrientationAnswer &answer)
{
    stream >> answer.degrees >> answer.confidence >> answer.script >> answer.scriptConfidence;
    if (!isQuarterTurn(answer.degrees) || !(answer.confidence >= 0) ||
        !(answer.scriptConfidence >= 0))
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

/// A message is the index of its alternative, then that alternative's fields.
template <typename... Alternatives>
QByteArray encodeVariant(const std::variant<Alternatives...> &message)
{
    QByteArray frame;
    QDataStream stream(&frame, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
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
std::optional<std::variant<Alternatives...>> decodeVariant(const QByteArray &frame,
                                                           std::variant<Alternatives...> message)
{
    QDataStream stream(frame);
    stream.setVersion(streamVersion);
    quint8 wanted = 0;
    stream >> wanted;
    quint8 index = 0;
    const bool read =
        ((wanted == index++ && readAlternative<Alternatives>(stream, message)) || ...);
    if (!read)
        return std::nullopt;
    return message;
}

} // namespace

QByteArray encode(const RecognizerRequest &request)
{
    return encodeVariant(request);
}

QByteArray encode(const RecognizerAnswer &answer)
{
    return encodeVariant(answer);
}

std::optional<RecognizerRequest> decodeRequest(const QByteArray &frame)
{
    return decodeVariant(frame, RecognizerRequest());
}

std::optional<RecognizerAnswer> decodeAnswer(const QByteArray &frame)
{
    return decodeVariant(frame, RecognizerAnswer());
}

} // namespace velmor
