#include "scanengine/imaging/PageProcessing.h"

#include "scanengine/imaging/BlankTest.h"
#include "scanengine/imaging/CleanBackground.h"
#include "scanengine/imaging/Levels.h"
#include "scanengine/imaging/PageColors.h"
#include "scanengine/imaging/Straighten.h"

#include <utility>

namespace scanengine {

std::optional<QImage> finishedPage(QImage image, const AutoSwitches &switches, ColorMode mode)
{
    image = straightened(std::move(image), switches);
    PageSurvey survey;
    if (switches.blankRemoval || switches.cleanBackground || mode == ColorMode::automatic)
        survey = surveyOf(image);
    // Asked before the tones change: brightness can take the only faint line on a page, and such a
    // page isn't blank.
    if (switches.blankRemoval && isBlank(survey))
        return std::nullopt;
    if (switches.cleanBackground)
        image = withCleanBackground(std::move(image), survey);
    if (switches.autoLevels)
        image = withAutoLevels(std::move(image));
    image = withLevels(std::move(image), switches.brightness, switches.contrast);
    return inColorMode(image, mode == ColorMode::automatic ? colorsOf(image, survey) : mode);
}

} // namespace scanengine
