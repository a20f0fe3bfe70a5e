#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/imaging/ColorMode.h"
#include "scanengine/imaging/PageSurvey.h"

#include <QImage>

#include <optional>

namespace scanengine {

/// A captured `image`, 8-bit grey or RGB32, as a finished page: the steps that `switches` ask for,
/// in their order, and the colours that `mode` keeps. Nothing if it is blank and blank pages are to
/// be left out; a null image means that memory ran out.
[[nodiscard]] std::optional<QImage> finishedPage(QImage image, const AutoSwitches &switches,
                                                 ColorMode mode);

/// A page with all steps taken but those that brightness and contrast decide.
struct PreparedPage {
    QImage image;
    PageSurvey survey; ///< Of the page as captured; empty where no later step needs it.
};

/// The same in two parts, for those who try one brightness after the other on a page. `switches`
/// and `mode` are the same for both, but for brightness and contrast, which the first doesn't heed.
[[nodiscard]] std::optional<PreparedPage> preparedPage(QImage image, const AutoSwitches &switches,
                                                       ColorMode mode);
[[nodiscard]] QImage finishedPage(PreparedPage page, const AutoSwitches &switches, ColorMode mode);

} // namespace scanengine
