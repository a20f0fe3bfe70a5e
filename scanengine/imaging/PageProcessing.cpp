#include "scanengine/imaging/PageProcessing.h"

#include "scanengine/imaging/BlankTest.h"
#include "scanengine/imaging/CleanBackground.h"
#include "scanengine/imaging/Levels.h"
#include "scanengine/imaging/PageColors.h"
#include "scanengine/imaging/Straighten.h"

#include <utility>

namespace scanengine {

std::optional<PreparedPage> preparedPage(QImage image, const AutoSwitches &switches, ColorMode mode)
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
    if (mode != ColorMode::automatic)
        survey = {};
    return PreparedPage{std::move(image), std::move(survey)};
}

QImage finishedPage(PreparedPage page, const AutoSwitches &switches, ColorMode mode)
{
    const QImage image = withLevels(std::move(page.image), switches.brightness, switches.contrast);
    return inColorMode(image, mode == ColorMode::automatic ? colorsOf(image, page.survey) : mode);
}

std::optional<QImage> finishedPage(QImage image, const AutoSwitches &switches, ColorMode mode)
{
    std::optional<PreparedPage> page = preparedPage(std::move(image), switches, mode);
    if (!page)
        return std::nullopt;
    return finishedPage(std::move(*page), switches, mode);
}

} // namespace scanengine
