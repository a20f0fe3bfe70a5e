#pragma once

#include "scanengine/drivers/sane/SaneOptions.h"

#include <QStringList>

#include <optional>

/// Which of an option's legal values to take.
namespace scanengine {

/// Whether the option takes a setting now: it is active, settable, and holds one value.
[[nodiscard]] bool isOpen(const SaneOption &option);

/// `number` as a value of the option's type; the legal one that is nearest if it must be within a
/// range or on a step. A word that begins with the number for an option of words; no value if it
/// has no such word.
[[nodiscard]] SaneValue valueFor(const SaneOption &option, double number);

/// The least number that `option` allows and that is not below `wanted`; failing that its greatest.
/// Nothing if it is no option of numbers. Words count by the number that they begin with.
[[nodiscard]] std::optional<double> notBelow(const SaneOption &option, double wanted);

struct Limits {
    double minimum;
    double maximum;
};

/// The least and the greatest number that `option` allows, if it bounds them.
[[nodiscard]] std::optional<Limits> limitsOf(const SaneOption &option);

/// The number that the option has now, also one that a word begins with, else `otherwise`.
[[nodiscard]] double currentNumber(const SaneOption &option, double otherwise);

/// The words that `option` allows; none if it isn't one of words.
[[nodiscard]] QStringList wordsOf(const SaneOption &option);

/// Whether both values are the same but for the rounding of fixed-point numbers.
[[nodiscard]] bool isSameValue(const SaneValue &one, const SaneValue &other);

} // namespace scanengine
