#include "scanengine/imaging/Resample.h"

#include "scanengine/imaging/PixelLimit.h"

#include <algorithm>
#include <cmath>

namespace scanengine {
namespace {

constexpr double metersPerInch = 0.0254;

/// `pixels` at `dotsPerMeter` as pixels at `dpi`. Whole dots per metre are too coarse to tell 300
/// dpi (11811) exactly, so within half a dot of it the side stays as it is.
double sideAt(int dpi, int pixels, int dotsPerMeter)
{
    const double wanted = dpi / metersPerInch;
    if (std::abs(dotsPerMeter - wanted) <= 1)
        return pixels;
    return std::max(1.0, pixels * wanted / dotsPerMeter);
}

} // namespace

std::optional<QImage> atResolution(const QImage &image, int dpi)
{
    const double width = sideAt(dpi, image.width(), image.dotsPerMeterX());
    const double height = sideAt(dpi, image.height(), image.dotsPerMeterY());
    if (width * height > double(maxPixels))
        return std::nullopt;

    const QSize size(int(std::lround(width)), int(std::lround(height)));
    QImage result = image;
    if (size != image.size()) {
        result = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                     .convertToFormat(image.format());
    }
    if (result.isNull())
        return std::nullopt;
    const int dotsPerMeter = int(std::lround(dpi / metersPerInch));
    result.setDotsPerMeterX(dotsPerMeter);
    result.setDotsPerMeterY(dotsPerMeter);
    return result;
}

} // namespace scanengine
