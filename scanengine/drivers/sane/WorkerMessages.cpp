#include "scanengine/drivers/sane/WorkerMessages.h"

#include <QDataStream>
#include <QIODevice>

#include <concepts>
#include <type_traits>

namespace scanengine {

namespace {

constexpr auto streamVersion = QDataStream::Qt_6_4;

/// The fields of each message and of what messages hold, in the order they are sent.
template <typename Type, typename Wanted>
concept Is = std::same_as<std::remove_const_t<Type>, Wanted>;

void visitFields(auto &visit, Is<SaneDevice> auto &device)
{
    visit(device.name, device.vendor, device.model, device.type);
}

void visitFields(auto &visit, Is<SaneRange> auto &range)
{
    visit(range.minimum, range.maximum, range.step);
}

void visitFields(auto &visit, Is<SaneOption> auto &option)
{
    visit(option.index, option.name, option.title, option.type, option.unit, option.isActive,
          option.isSettable, option.isAdvanced, option.count, option.constraint, option.value);
}

void visitFields(auto &visit, Is<SaneSetting> auto &setting)
{
    visit(setting.index, setting.name, setting.value);
}

void visitFields(auto &visit, Is<FrameParameters> auto &frame)
{
    visit(frame.format, frame.isLast, frame.bytesPerLine, frame.pixelsPerLine, frame.lines,
          frame.depth);
}

void visitFields(auto &, Is<SearchRequest> auto &) {}
void visitFields(auto &, Is<OptionsRequest> auto &) {}
void visitFields(auto &, Is<StartRequest> auto &) {}
void visitFields(auto &, Is<CancelRequest> auto &) {}
void visitFields(auto &, Is<CancelledAnswer> auto &) {}

void visitFields(auto &visit, Is<OpenRequest> auto &request)
{
    visit(request.name);
}

void visitFields(auto &visit, Is<SetRequest> auto &request)
{
    visit(request.setting);
}

void visitFields(auto &visit, Is<DevicesAnswer> auto &answer)
{
    visit(answer.status, answer.devices);
}

void visitFields(auto &visit, Is<OptionsAnswer> auto &answer)
{
    visit(answer.status, answer.options);
}

void visitFields(auto &visit, Is<StartedAnswer> auto &answer)
{
    visit(answer.status, answer.parameters);
}

void visitFields(auto &visit, Is<DataAnswer> auto &answer)
{
    visit(answer.bytes);
}

void visitFields(auto &visit, Is<FrameEndAnswer> auto &answer)
{
    visit(answer.status);
}

/// Writes the fields of messages one after the other.
class Writer {
public:
    explicit Writer(QByteArray *frame) : m_stream(frame, QIODevice::WriteOnly)
    {
        m_stream.setVersion(streamVersion);
    }

    template <typename... Fields> void operator()(const Fields &...fields) { (write(fields), ...); }

private:
    template <typename Field> void write(const Field &field)
    {
        if constexpr (std::is_enum_v<Field>)
            m_stream << static_cast<qint32>(field);
        else if constexpr (requires { m_stream << field; })
            m_stream << field;
        else
            visitFields(*this, field);
    }
    template <typename Item> void write(const QList<Item> &items)
    {
        m_stream << static_cast<quint32>(items.size());
        for (const Item &item : items)
            write(item);
    }
    template <typename... Alternatives> void write(const std::variant<Alternatives...> &value)
    {
        m_stream << static_cast<quint8>(value.index());
        std::visit([this](const auto &alternative) { write(alternative); }, value);
    }
    void write(std::monostate) {}

    QDataStream m_stream;
};

/// Reads what a Writer has written, no further than it is sound.
class Reader {
public:
    explicit Reader(const QByteArray &frame) : m_stream(frame)
    {
        m_stream.setVersion(streamVersion);
    }

    template <typename... Fields> void operator()(Fields &...fields) { (read(fields), ...); }

    [[nodiscard]] bool isSound() const { return m_stream.status() == QDataStream::Ok; }
    [[nodiscard]] bool isAtEnd() const { return m_stream.atEnd(); }

private:
    template <typename Field> void read(Field &field)
    {
        if constexpr (std::is_enum_v<Field>) {
            qint32 number = 0;
            m_stream >> number;
            field = static_cast<Field>(number);
        } else if constexpr (requires { m_stream >> field; }) {
            m_stream >> field;
        } else {
            visitFields(*this, field);
        }
    }
    template <typename Item> void read(QList<Item> &items)
    {
        quint32 count = 0;
        m_stream >> count;
        for (quint32 i = 0; i < count && isSound(); ++i)
            read(items.emplaceBack());
    }
    template <typename... Alternatives> void read(std::variant<Alternatives...> &value)
    {
        quint8 wanted = 0;
        m_stream >> wanted;
        quint8 index = 0;
        const bool isKnown =
            ((wanted == index++ && (read(value.template emplace<Alternatives>()), true)) || ...);
        if (!isKnown)
            m_stream.setStatus(QDataStream::ReadCorruptData);
    }
    void read(std::monostate &) {}

    QDataStream m_stream;
};

template <typename Message> QByteArray encoded(const Message &message)
{
    QByteArray frame;
    Writer writer(&frame);
    writer(message);
    return frame;
}

template <typename Message> std::optional<Message> decoded(QByteArrayView frame)
{
    Message message;
    Reader reader(QByteArray::fromRawData(frame.data(), frame.size()));
    reader(message);
    if (!reader.isSound() || !reader.isAtEnd())
        return std::nullopt;
    return message;
}

} // namespace

QByteArray encode(const WorkerRequest &request)
{
    return encoded(request);
}

QByteArray encode(const WorkerAnswer &answer)
{
    return encoded(answer);
}

std::optional<WorkerRequest> decodeRequest(QByteArrayView frame)
{
    return decoded<WorkerRequest>(frame);
}

std::optional<WorkerAnswer> decodeAnswer(QByteArrayView frame)
{
    return decoded<WorkerAnswer>(frame);
}

} // namespace scanengine
