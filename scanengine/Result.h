#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace scanengine {

/// Why something could not be done, as a sentence for the person at the scanner.
struct Fault {
    QString message;

    bool operator==(const Fault &) const = default;
};

/// A value, or the reason why there is none.
template <typename Value> using Result = std::variant<Value, Fault>;

/// The reason in `result`, or nullptr when it holds a value.
template <typename... Alternatives>
[[nodiscard]] const Fault *faultOf(const std::variant<Alternatives...> &result)
{
    return std::get_if<Fault>(&result);
}

} // namespace scanengine
