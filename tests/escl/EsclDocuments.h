#pragma once

#include <QByteArray>

namespace scanengine {

struct EsclSetup;

/// What the scanner of `setup` says that it can do.
[[nodiscard]] QByteArray capabilitiesDocument(const EsclSetup &setup);

/// `state` is "Idle" or "Processing", `feederState` "ScannerAdfLoaded" and the like, or empty for
/// no feeder.
[[nodiscard]] QByteArray statusDocument(const QByteArray &state, const QByteArray &feederState);

} // namespace scanengine
