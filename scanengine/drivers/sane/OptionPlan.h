#pragma once

#include "scanengine/drivers/PaperSource.h"
#include "scanengine/drivers/sane/PaperSensors.h"
#include "scanengine/drivers/sane/SaneOptions.h"
#include "scanengine/imaging/ColorMode.h"

#include <QSizeF>
#include <QStringList>

#include <optional>

namespace scanengine {

/// How a device is to capture pages.
struct CaptureWish {
    PaperSource source = PaperSource::automatic;
    int dpi = 300;
    ColorMode colorMode = ColorMode::automatic;
};

/// What a device will capture with the options it has now.
struct Capture {
    bool isFeeder = false; ///< Sheet after sheet until SANE_STATUS_NO_DOCS; else one page.
    bool isDuplex = false; ///< Both sides of each sheet, the front first.
    double xDpi = 0;       ///< Dots per inch; those asked for if the device doesn't tell.
    double yDpi = 0;
    bool needsResampling = false; ///< To have the resolution that was asked for.
    QSizeF areaMm; ///< Of the largest page, in millimetres; empty if the device doesn't tell.

    bool operator==(const Capture &) const = default;
};

/// The way from the options of a device to those that a capture needs, one setting at a time,
/// because every setting may change all options. In use:
///
///     OptionPlan plan(wish);
///     while (const auto setting = plan.nextSetting(options))
///         set it, whether that works or not; read all options again;
///     sane_start; if it answers NO_DOCS and plan.fallBackToFlatbed(): the same again
///
/// An option that the device lacks, or that it refuses to set, is passed over. No option is set
/// twice, so the way ends. Processing in the device that could spoil pages is left neutral.
class OptionPlan {
public:
    explicit OptionPlan(const CaptureWish &wish);

    /// The setting to make next with a device that has `options` now; nothing when all are made.
    /// Counts the setting as made. A paper sensor among the options decides where to take paper
    /// from, as long as both are possible.
    [[nodiscard]] std::optional<SaneSetting> nextSetting(const SaneOptions &options);

    /// Takes the plan from the empty feeder to the flatbed, to be settled anew by `nextSetting`.
    /// False if that can't be, or isn't wanted: then the feeder's being empty is final. Ask only
    /// before the first page.
    [[nodiscard]] bool fallBackToFlatbed();

    /// What `options` lead to.
    [[nodiscard]] Capture capture(const SaneOptions &options) const;

private:
    enum class Place { feeder, flatbed };

    void choosePlace(const SaneOptions &options);

    CaptureWish m_wish;
    std::optional<Place> m_place; ///< Not known before the first options were seen.
    bool m_hasFlatbed = false;
    bool m_hasFeeder = false;
    QStringList m_set; ///< Names of the options that were set or tried.
};

} // namespace scanengine
