#include "scanengine/drivers/sane/OptionChoice.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace scanengine {
namespace {

/// Far above the 1/65536 of SANE's fixed-point numbers, far below any length or resolution that
/// matters.
constexpr double roundingError = 0.001;

std::optional<double> leadingNumber(const QString &word)
{
    static const QRegularExpression number(QStringLiteral("^\\s*(\\d+(?:\\.\\d+)?)"));
    const QRegularExpressionMatch match = number.match(word);
    if (!match.hasMatch())
        return std::nullopt;
    return match.captured(1).toDouble();
}

/// The numbers that the option lists, in its order.
QList<double> listedNumbers(const SaneOption &option)
{
    if (const auto *numbers = std::get_if<QList<double>>(&option.constraint))
        return *numbers;
    QList<double> numbers;
    for (const QString &word : wordsOf(option)) {
        if (const auto number = leadingNumber(word))
            numbers.append(*number);
    }
    return numbers;
}

/// The least value on the steps of `range` that is not below `wanted`, within the range.
double notBelowInRange(const SaneRange &range, double wanted)
{
    if (wanted <= range.minimum)
        return range.minimum;
    double value = wanted;
    if (range.step > 0) {
        const double steps = (wanted - range.minimum) / range.step;
        value = range.minimum + std::ceil(steps - roundingError) * range.step;
    }
    return std::min(value, range.maximum);
}

/// The bounds of a range are legal, on a step or not.
double nearestLegal(const SaneOption &option, double number)
{
    const auto *range = std::get_if<SaneRange>(&option.constraint);
    if (!range)
        return number;
    if (number <= range->minimum)
        return range->minimum;
    if (number >= range->maximum)
        return range->maximum;
    if (range->step <= 0)
        return number;
    const double steps = std::floor((number - range->minimum) / range->step + 0.5);
    const double onStep = range->minimum + steps * range->step;
    const bool isEndNearer = range->maximum - number <= std::abs(onStep - number);
    return isEndNearer ? range->maximum : onStep;
}

} // namespace

bool isOpen(const SaneOption &option)
{
    return option.isActive && option.isSettable && option.count == 1 &&
           option.type != SaneType::button && option.type != SaneType::group;
}

SaneValue valueFor(const SaneOption &option, double number)
{
    switch (option.type) {
    case SaneType::integer:
        return int(std::lround(nearestLegal(option, number)));
    case SaneType::fixed:
        return nearestLegal(option, number);
    case SaneType::text:
        for (const QString &word : wordsOf(option)) {
            if (leadingNumber(word) == number)
                return word;
        }
        return {};
    default:
        return {};
    }
}

std::optional<double> notBelow(const SaneOption &option, double wanted)
{
    if (const auto *range = std::get_if<SaneRange>(&option.constraint))
        return notBelowInRange(*range, wanted);
    const QList<double> numbers = listedNumbers(option);
    if (numbers.isEmpty()) {
        const bool isFree = option.type == SaneType::integer || option.type == SaneType::fixed;
        return isFree ? std::optional(wanted) : std::nullopt;
    }
    std::optional<double> best;
    for (const double number : numbers) {
        if (number >= wanted && (!best || number < *best))
            best = number;
    }
    return best ? best : std::optional(*std::max_element(numbers.begin(), numbers.end()));
}

std::optional<Limits> limitsOf(const SaneOption &option)
{
    if (const auto *range = std::get_if<SaneRange>(&option.constraint))
        return Limits{range->minimum, range->maximum};
    const QList<double> numbers = listedNumbers(option);
    if (numbers.isEmpty())
        return std::nullopt;
    const auto [least, greatest] = std::minmax_element(numbers.begin(), numbers.end());
    return Limits{*least, *greatest};
}

double currentNumber(const SaneOption &option, double otherwise)
{
    if (const auto *text = std::get_if<QString>(&option.value))
        return leadingNumber(*text).value_or(otherwise);
    return numberOf(option.value, otherwise);
}

QStringList wordsOf(const SaneOption &option)
{
    const auto *words = std::get_if<QStringList>(&option.constraint);
    return words ? *words : QStringList();
}

bool isSameValue(const SaneValue &one, const SaneValue &other)
{
    if (one.index() != other.index())
        return false;
    if (const auto *number = std::get_if<double>(&one))
        return std::abs(*number - std::get<double>(other)) < roundingError;
    return one == other;
}

} // namespace scanengine
