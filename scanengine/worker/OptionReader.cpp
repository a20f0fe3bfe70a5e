#include "scanengine/worker/OptionReader.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace scanengine {
namespace {

/// More options, longer lists and longer values than this are a backend's fault.
constexpr int mostOptions = 2'000;
constexpr int mostListed = 10'000;
constexpr int mostValueBytes = 64 * 1024;

QString text(SANE_String_Const words)
{
    return QString::fromUtf8(words);
}

double number(SANE_Word word, SANE_Value_Type type)
{
    return type == SANE_TYPE_FIXED ? SANE_UNFIX(word) : double(word);
}

bool isNumber(SANE_Value_Type type)
{
    return type == SANE_TYPE_INT || type == SANE_TYPE_FIXED;
}

SaneConstraint constraintOf(const SANE_Option_Descriptor &descriptor)
{
    const auto &constraint = descriptor.constraint;
    const SANE_Value_Type type = descriptor.type;
    if (descriptor.constraint_type == SANE_CONSTRAINT_RANGE && constraint.range) {
        const SANE_Range &range = *constraint.range;
        return SaneRange{number(range.min, type), number(range.max, type),
                         number(range.quant, type)};
    }
    if (descriptor.constraint_type == SANE_CONSTRAINT_WORD_LIST && constraint.word_list) {
        QList<double> numbers;
        const int count = std::clamp(constraint.word_list[0], 0, mostListed);
        for (int i = 1; i <= count; ++i)
            numbers.append(number(constraint.word_list[i], type));
        return numbers;
    }
    if (descriptor.constraint_type == SANE_CONSTRAINT_STRING_LIST && constraint.string_list) {
        QStringList words;
        for (int i = 0; i < mostListed && constraint.string_list[i]; ++i)
            words.append(text(constraint.string_list[i]));
        return words;
    }
    return {};
}

bool isDescribedSensibly(const SANE_Option_Descriptor *descriptor)
{
    return descriptor && descriptor->type >= SANE_TYPE_BOOL &&
           descriptor->type <= SANE_TYPE_GROUP && descriptor->size >= 0 &&
           descriptor->size <= mostValueBytes;
}

SaneOption described(int index, const SANE_Option_Descriptor &descriptor)
{
    SaneOption option;
    option.index = index;
    option.name = text(descriptor.name);
    option.title = text(descriptor.title);
    option.type = static_cast<SaneType>(descriptor.type);
    option.unit = static_cast<SaneUnit>(descriptor.unit);
    option.isActive = SANE_OPTION_IS_ACTIVE(descriptor.cap);
    option.isSettable = SANE_OPTION_IS_SETTABLE(descriptor.cap);
    option.isAdvanced = (descriptor.cap & SANE_CAP_ADVANCED) != 0;
    if (isNumber(descriptor.type))
        option.count = std::max(1, int(descriptor.size / int(sizeof(SANE_Word))));
    option.constraint = constraintOf(descriptor);
    return option;
}

/// Room for a value of `size` bytes and more, in case the backend writes what it didn't announce.
std::vector<SANE_Word> roomFor(SANE_Int size)
{
    return std::vector<SANE_Word>(static_cast<size_t>(size) / sizeof(SANE_Word) + 64, 0);
}

/// `value` as the backend takes it; nothing in it for a value of the wrong type.
std::vector<SANE_Word> encoded(const SaneValue &value, const SANE_Option_Descriptor &descriptor)
{
    std::vector<SANE_Word> room = roomFor(descriptor.size);
    if (descriptor.type == SANE_TYPE_STRING) {
        const auto *words = std::get_if<QString>(&value);
        if (!words)
            return {};
        const QByteArray bytes = words->toUtf8();
        const auto count = std::min(bytes.size(), qsizetype(std::max(descriptor.size - 1, 0)));
        std::memcpy(room.data(), bytes.constData(), static_cast<size_t>(count));
        return room;
    }
    if (descriptor.type == SANE_TYPE_BUTTON)
        return room;
    if (const auto *flag = std::get_if<bool>(&value))
        room[0] = *flag ? SANE_TRUE : SANE_FALSE;
    else if (descriptor.type == SANE_TYPE_FIXED)
        room[0] = SANE_FIX(numberOf(value, 0));
    else
        room[0] = SANE_Word(numberOf(value, 0));
    return room;
}

} // namespace

SaneOptions readOptions(SANE_Handle device)
{
    SANE_Word count = 0;
    if (sane_control_option(device, 0, SANE_ACTION_GET_VALUE, &count, nullptr) != SANE_STATUS_GOOD)
        return {};
    SaneOptions options;
    for (int i = 1; i < std::min(count, mostOptions); ++i) {
        const SANE_Option_Descriptor *descriptor = sane_get_option_descriptor(device, i);
        if (!isDescribedSensibly(descriptor))
            continue;
        SaneOption option = described(i, *descriptor);
        option.value = readValue(device, option);
        options.append(std::move(option));
    }
    return options;
}

SaneValue readValue(SANE_Handle device, const SaneOption &option)
{
    const SANE_Option_Descriptor *descriptor = sane_get_option_descriptor(device, option.index);
    const bool isReadable = isDescribedSensibly(descriptor) &&
                            SANE_OPTION_IS_ACTIVE(descriptor->cap) &&
                            (descriptor->cap & SANE_CAP_SOFT_DETECT) != 0 && option.count == 1 &&
                            descriptor->type <= SANE_TYPE_STRING;
    if (!isReadable)
        return {};
    std::vector<SANE_Word> room = roomFor(descriptor->size);
    if (sane_control_option(device, option.index, SANE_ACTION_GET_VALUE, room.data(), nullptr) !=
        SANE_STATUS_GOOD)
        return {};
    switch (descriptor->type) {
    case SANE_TYPE_BOOL:
        return room[0] != SANE_FALSE;
    case SANE_TYPE_INT:
        return int(room[0]);
    case SANE_TYPE_FIXED:
        return SANE_UNFIX(room[0]);
    default:
        room.back() = 0; // ends the text in any case
        return text(reinterpret_cast<const char *>(room.data()));
    }
}

SetResult writeValue(SANE_Handle device, const SaneSetting &setting)
{
    const SANE_Option_Descriptor *descriptor = sane_get_option_descriptor(device, setting.index);
    if (!isDescribedSensibly(descriptor) || !SANE_OPTION_IS_ACTIVE(descriptor->cap) ||
        !SANE_OPTION_IS_SETTABLE(descriptor->cap))
        return {SANE_STATUS_INVAL, false};
    std::vector<SANE_Word> value = encoded(setting.value, *descriptor);
    if (value.empty())
        return {SANE_STATUS_INVAL, false};
    SANE_Int info = 0;
    const SANE_Status status =
        sane_control_option(device, setting.index, SANE_ACTION_SET_VALUE, value.data(), &info);
    return {status, (info & SANE_INFO_RELOAD_OPTIONS) != 0};
}

} // namespace scanengine
