#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

/// What a device of SANE says about itself, as plain values that can cross a border between
/// processes. Nothing here needs libsane.
namespace scanengine {

/// A device as a search of SANE lists it.
struct SaneDevice {
    QString name;   ///< What it is opened by, "genesys:libusb:001:005".
    QString vendor; ///< "Noname" if the backend knows none.
    QString model;
    QString type; ///< "flatbed scanner", "still camera", … Some backends tell an address here.

    bool operator==(const SaneDevice &) const = default;
};

/// The types of options, in the order of SANE_Value_Type.
enum class SaneType { boolean, integer, fixed, text, button, group };

/// The units of options, in the order of SANE_Unit.
enum class SaneUnit { none, pixel, bit, millimetre, dpi, percent, microsecond };

/// The value of an option. No value: a button, a group, an inactive option, one that can't be read,
/// or a vector of numbers. A fixed-point number is a double.
using SaneValue = std::variant<std::monostate, bool, int, double, QString>;

struct SaneRange {
    double minimum = 0;
    double maximum = 0;
    double step = 0; ///< Between legal values, from the minimum; 0 for any value.

    bool operator==(const SaneRange &) const = default;
};

/// What a value must be: anything, within a range, one of some numbers, or one of some words.
using SaneConstraint = std::variant<std::monostate, SaneRange, QList<double>, QStringList>;

/// An option of an open device. All of them change whenever one is set.
struct SaneOption {
    int index = 0; ///< Its number with SANE.
    QString name;
    QString title; ///< For people, in English.
    SaneType type = SaneType::integer;
    SaneUnit unit = SaneUnit::none;
    bool isActive = true;
    bool isSettable = true;  ///< By software.
    bool isAdvanced = false; ///< For experts, as the backend sees it.
    int count = 1;           ///< Numbers in the value; above 1 for vectors such as gamma tables.
    SaneConstraint constraint;
    SaneValue value;

    bool operator==(const SaneOption &) const = default;
};

using SaneOptions = QList<SaneOption>;

/// An option that is to be given a value. The value's type suits the option's: bool, int, double
/// for a fixed-point number, text.
struct SaneSetting {
    int index = 0;
    QString name;
    SaneValue value;

    bool operator==(const SaneSetting &) const = default;
};

/// The option of this name, or nullptr. Groups don't count: their names may repeat an option's.
[[nodiscard]] const SaneOption *findOption(const SaneOptions &options, QStringView name);

/// A number that is an integer or fixed-point value, else `otherwise`.
[[nodiscard]] double numberOf(const SaneValue &value, double otherwise);

} // namespace scanengine
