#include "scanengine/drivers/sane/PageArea.h"

#include "scanengine/drivers/sane/OptionChoice.h"
#include "scanengine/drivers/sane/OptionPlan.h"
#include "scanengine/imaging/PixelLimit.h"

#include <algorithm>

namespace scanengine {
namespace {

constexpr double mmPerInch = 25.4;
/// A feeder without a sense of the paper's end fills the rest of the page with nothing: no longer
/// than a legal sheet, 14 inches.
constexpr double legalLengthMm = 14 * mmPerInch;
/// The usual length of a feeder's mode for long paper, 34 inches.
constexpr double longLengthMm = 34 * mmPerInch;

/// Millimetres that `position` of an option is, 0 if its unit isn't known.
double toMm(const SaneOption &option, double position, double dpi)
{
    switch (option.unit) {
    case SaneUnit::millimetre:
        return position;
    case SaneUnit::pixel:
        return position / dpi * mmPerInch;
    default:
        return 0;
    }
}

double fromMm(const SaneOption &option, double mm, double dpi)
{
    return option.unit == SaneUnit::pixel ? mm / mmPerInch * dpi : mm;
}

bool endsWithPaper(const SaneOptions &options)
{
    return std::any_of(std::begin(paperEndNames), std::end(paperEndNames),
                       [&options](QStringView name) {
                           const SaneOption *option = findOption(options, name);
                           return option && option->isActive && option->value == SaneValue(true);
                       });
}

/// The least or the greatest position that the option allows.
enum class Bound { least, greatest };

std::optional<double> boundOf(const SaneOption *option, Bound bound)
{
    const auto limits = option && option->isActive ? limitsOf(*option) : std::nullopt;
    if (!limits)
        return std::nullopt;
    return bound == Bound::least ? limits->minimum : limits->maximum;
}

/// The longest page to scan, in millimetres.
double greatestLengthMm(const SaneOptions &options, const Capture &capture)
{
    const double wantedMm = endsWithPaper(options) ? longLengthMm : legalLengthMm;
    const SaneOption *right = findOption(options, u"br-x");
    const double widthMm = toMm(right ? *right : SaneOption(),
                                boundOf(right, Bound::greatest).value_or(0), capture.xDpi);
    const double widthDots = widthMm / mmPerInch * capture.xDpi;
    if (widthDots < 1)
        return wantedMm;
    return std::min(wantedMm, double(maxPixels) / widthDots / capture.yDpi * mmPerInch);
}

} // namespace

QList<PageEdge> pageEdges(const SaneOptions &options, const Capture &capture)
{
    QList<PageEdge> edges;
    const auto add = [&](QStringView name, Bound bound) {
        if (const auto position = boundOf(findOption(options, name), bound))
            edges.append({name, *position});
    };
    const auto addLength = [&](QStringView name) {
        const SaneOption *option = findOption(options, name);
        auto position = boundOf(option, Bound::greatest);
        if (!position)
            return;
        if (capture.isFeeder) {
            const double lengthMm = greatestLengthMm(options, capture);
            position = std::min(*position, fromMm(*option, lengthMm, capture.yDpi));
        }
        edges.append({name, *position});
    };
    // The page's size before the area, which it bounds.
    add(u"page-width", Bound::greatest);
    addLength(u"page-height");
    add(u"tl-x", Bound::least);
    add(u"tl-y", Bound::least);
    add(u"br-x", Bound::greatest);
    addLength(u"br-y");
    return edges;
}

QSizeF pageAreaMm(const SaneOptions &options, const Capture &capture)
{
    const auto span = [&options](QStringView from, QStringView to, double dpi) {
        const SaneOption *begin = findOption(options, from);
        const SaneOption *end = findOption(options, to);
        if (!begin || !end)
            return 0.0;
        return toMm(*end, numberOf(end->value, 0), dpi) -
               toMm(*begin, numberOf(begin->value, 0), dpi);
    };
    const QSizeF area(span(u"tl-x", u"br-x", capture.xDpi), span(u"tl-y", u"br-y", capture.yDpi));
    return area.isEmpty() ? QSizeF() : area;
}

} // namespace scanengine
