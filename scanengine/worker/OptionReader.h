#pragma once

#include "scanengine/drivers/sane/SaneOptions.h"

#include <sane/sane.h>

namespace scanengine {

/// Options of an open device, between SANE's records and plain values. The handle stays the
/// caller's; all run on the thread that uses it.

/// All options with their values; those that the backend describes in no sensible way are left out.
[[nodiscard]] SaneOptions readOptions(SANE_Handle device);

/// The value that `option` has now; no value if it can't be told.
[[nodiscard]] SaneValue readValue(SANE_Handle device, const SaneOption &option);

/// What a setting has led to.
struct SetResult {
    SANE_Status status = SANE_STATUS_GOOD;
    bool changesOthers = false; ///< All options are to be read again.
};

/// Gives an option a value.
[[nodiscard]] SetResult writeValue(SANE_Handle device, const SaneSetting &setting);

} // namespace scanengine
