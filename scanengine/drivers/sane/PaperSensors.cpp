#include "scanengine/drivers/sane/PaperSensors.h"

#include <QStringView>

namespace scanengine {
namespace {

constexpr QStringView paperNames[] = {
    u"page-loaded",     u"adf-loaded", u"doc-in-adf",       u"paper-loaded",
    u"document-loaded", u"paper-in",   u"adf-paper-loaded",
};

/// The best first: "start" stands beside "stop" on devices that have no "scan".
constexpr QStringView buttonNames[] = {u"scan", u"start", u"scan-button", u"button-pressed"};

/// What `button-pressed` says after the one for scanning; it tells of all buttons.
constexpr QStringView scanWord = u"scan";

/// Whether the option can be read as a state of the device that only the device changes.
bool isSensor(const SaneOption &option)
{
    const bool hasState = option.type == SaneType::boolean || option.type == SaneType::integer ||
                          option.type == SaneType::text;
    return hasState && option.isActive && !option.isSettable;
}

bool isOn(const SaneValue &value)
{
    if (const auto *flag = std::get_if<bool>(&value))
        return *flag;
    if (const auto *text = std::get_if<QString>(&value))
        return text->compare(scanWord, Qt::CaseInsensitive) == 0;
    return numberOf(value, 0) > 0;
}

template <typename Names>
const SaneOption *firstSensor(const SaneOptions &options, const Names &names)
{
    for (const QStringView name : names) {
        const SaneOption *option = findOption(options, name);
        if (option && isSensor(*option))
            return option;
    }
    return nullptr;
}

} // namespace

const SaneOption *paperSensor(const SaneOptions &options)
{
    return firstSensor(options, paperNames);
}

std::optional<bool> feederHoldsPaper(const SaneOptions &options)
{
    const SaneOption *sensor = paperSensor(options);
    if (!sensor || std::holds_alternative<std::monostate>(sensor->value))
        return std::nullopt;
    return isOn(sensor->value);
}

const SaneOption *scanButton(const SaneOptions &options)
{
    return firstSensor(options, buttonNames);
}

bool isScanButtonPressed(const SaneOptions &options)
{
    const SaneOption *button = scanButton(options);
    return button && isOn(button->value);
}

} // namespace scanengine
