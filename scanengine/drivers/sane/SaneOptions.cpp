#include "scanengine/drivers/sane/SaneOptions.h"

#include <algorithm>

namespace scanengine {

const SaneOption *findOption(const SaneOptions &options, QStringView name)
{
    const auto found =
        std::find_if(options.begin(), options.end(), [name](const SaneOption &option) {
            return option.type != SaneType::group && option.name == name;
        });
    return found == options.end() ? nullptr : &*found;
}

double numberOf(const SaneValue &value, double otherwise)
{
    if (const auto *integer = std::get_if<int>(&value))
        return *integer;
    if (const auto *real = std::get_if<double>(&value))
        return *real;
    return otherwise;
}

} // namespace scanengine
