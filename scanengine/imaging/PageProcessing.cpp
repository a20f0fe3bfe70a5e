#include "scanengine/imaging/PageProcessing.h"

#include "scanengine/imaging/Levels.h"

#include <utility>

namespace scanengine {

QImage finishedPage(QImage image, const AutoSwitches &switches, ColorMode mode)
{
    if (switches.cleanBackground)
        image = withCleanBackground(std::move(image));
    image = withLevels(std::move(image), switches.brightness, switches.contrast);
    return inColorMode(image, mode);
}

} // namespace scanengine
