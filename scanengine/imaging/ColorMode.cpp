#include "scanengine/imaging/ColorMode.h"

#include "scanengine/imaging/BlackWhite.h"

#include <QLatin1StringView>

namespace scanengine {

std::optional<ColorMode> colorModeOf(QStringView word)
{
    if (word == QLatin1StringView("auto"))
        return ColorMode::automatic;
    if (word == QLatin1StringView("color"))
        return ColorMode::color;
    if (word == QLatin1StringView("gray"))
        return ColorMode::gray;
    if (word == QLatin1StringView("bw"))
        return ColorMode::blackWhite;
    return std::nullopt;
}

QImage inColorMode(const QImage &image, ColorMode mode)
{
    switch (mode) {
    case ColorMode::blackWhite:
        return inBlackAndWhite(image);
    case ColorMode::gray:
        return image.convertToFormat(QImage::Format_Grayscale8);
    default:
        return image.convertToFormat(QImage::Format_RGB32);
    }
}

} // namespace scanengine
