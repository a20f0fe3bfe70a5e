#include "pipeline/recognizer/RecognizerMessages.h"

#include "pipeline/workers/MessageCoding.h"

namespace velmor {

namespace {

bool isQuarterTurn(int degrees)
{
    return degrees == 0 || degrees == 90 || degrees == 180 || degrees == 270;
}

} // namespace

// In this namespace, where the coding of messages finds them by their arguments.

static QDataStream &operator<<(QDataStream &stream, const GreyPixels &pixels)
{
    return stream << pixels.size << pixels.bytes;
}

static QDataStream &operator>>(QDataStream &stream, GreyPixels &pixels)
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

static QDataStream &operator<<(QDataStream &stream, const LanguagesRequest &)
{
    return stream;
}

static QDataStream &operator>>(QDataStream &stream, LanguagesRequest &)
{
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const TextRequest &request)
{
    return stream << request.language << request.dpi << request.page;
}

static QDataStream &operator>>(QDataStream &stream, TextRequest &request)
{
    return stream >> request.language >> request.dpi >> request.page;
}

static QDataStream &operator<<(QDataStream &stream, const OrientationRequest &request)
{
    return stream << request.dpi << request.page;
}

static QDataStream &operator>>(QDataStream &stream, OrientationRequest &request)
{
    return stream >> request.dpi >> request.page;
}

static QDataStream &operator<<(QDataStream &stream, const FailureAnswer &)
{
    return stream;
}

static QDataStream &operator>>(QDataStream &stream, FailureAnswer &)
{
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const LanguagesAnswer &answer)
{
    MessageCoding::writeList(stream, answer.languages);
    return stream;
}

static QDataStream &operator>>(QDataStream &stream, LanguagesAnswer &answer)
{
    answer.languages = MessageCoding::readList<QStringList>(stream);
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const RecognizedWord &word)
{
    return stream << word.text << word.box << word.confidence;
}

static QDataStream &operator>>(QDataStream &stream, RecognizedWord &word)
{
    stream >> word.text >> word.box >> word.confidence;
    if (word.text.isEmpty() || !word.box.isValid() ||
        !(word.confidence >= 0 && word.confidence <= 100))
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const RecognizedWords &words)
{
    MessageCoding::writeList(stream, words);
    return stream;
}

static QDataStream &operator>>(QDataStream &stream, RecognizedWords &words)
{
    words = MessageCoding::readList<RecognizedWords>(stream);
    if (words.empty())
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const TextAnswer &answer)
{
    MessageCoding::writeList(stream, answer.lines);
    return stream;
}

static QDataStream &operator>>(QDataStream &stream, TextAnswer &answer)
{
    answer.lines = MessageCoding::readList<std::vector<RecognizedWords>>(stream);
    return stream;
}

static QDataStream &operator<<(QDataStream &stream, const OrientationAnswer &answer)
{
    return stream << answer.degrees << answer.confidence << answer.script
                  << answer.scriptConfidence;
}

static QDataStream &operator>>(QDataStream &stream, OrientationAnswer &answer)
{
    stream >> answer.degrees >> answer.confidence >> answer.script >> answer.scriptConfidence;
    if (!isQuarterTurn(answer.degrees) || !(answer.confidence >= 0) ||
        !(answer.scriptConfidence >= 0))
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream;
}

QByteArray encode(const RecognizerRequest &request)
{
    return MessageCoding::encode(request);
}

QByteArray encode(const RecognizerAnswer &answer)
{
    return MessageCoding::encode(answer);
}

std::optional<RecognizerRequest> decodeRequest(const QByteArray &frame)
{
    return MessageCoding::decode<RecognizerRequest>(frame);
}

std::optional<RecognizerAnswer> decodeAnswer(const QByteArray &frame)
{
    return MessageCoding::decode<RecognizerAnswer>(frame);
}

} // namespace velmor
