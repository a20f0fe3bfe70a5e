#pragma once

#include <QString>

namespace scanengine {

/// The states a call of SANE ends in, with SANE's numbers.
enum class SaneStatus {
    good = 0,
    unsupported,
    cancelled,
    deviceBusy,
    invalid,
    endOfData,
    jammed,
    noDocs,
    coverOpen,
    ioError,
    noMemory,
    accessDenied,
};

/// What can befall the process that talks to the devices.
enum class WorkerTrouble {
    notStarted,     ///< It can't be launched.
    crashed,        ///< It ended by itself.
    hungAtSearch,   ///< A search took too long.
    hungAtOpen,     ///< The device doesn't answer when it is opened or set up.
    hungAtStart,    ///< No page began in time.
    hungInPage,     ///< The data of a page stopped flowing.
    deviceVanished, ///< The device is no longer in the list, or was unplugged.
    serverLost,     ///< The connection broke to the computer that serves the scanner.
};

/// A sentence for the person at the scanner: what is wrong and what to do. Every number gives one,
/// also one that SANE may add later. Ends with a full stop.
[[nodiscard]] QString statusText(SaneStatus status);
[[nodiscard]] QString troubleText(WorkerTrouble trouble);

/// What the user reads while the scan waits for such a device, and goes on by itself.
[[nodiscard]] QString waitingForBusyText();
[[nodiscard]] QString waitingForLampText();

/// `text`, which ends with a full stop, with word of the pages that are kept: "… scan again; the 4
/// pages before it are saved." Unchanged for no pages.
[[nodiscard]] QString withSavedPages(const QString &text, qsizetype pages);

} // namespace scanengine
