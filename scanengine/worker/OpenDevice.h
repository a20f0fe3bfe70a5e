#pragma once

#include "scanengine/drivers/sane/WorkerMessages.h"

#include <mutex>
#include <sane/sane.h>

namespace scanengine {

/// A device that is open, or none: SANE itself from its beginning to its end.
///
/// One thread uses it, which every call may block; `interrupt` alone is for another. Destruction
/// lets the device go.
class OpenDevice {
public:
    OpenDevice() = default;
    ~OpenDevice();
    OpenDevice(const OpenDevice &) = delete;
    OpenDevice &operator=(const OpenDevice &) = delete;

    /// The devices of all backends. Not while a device is open.
    [[nodiscard]] DevicesAnswer search();

    [[nodiscard]] OptionsAnswer open(const QString &name);
    [[nodiscard]] OptionsAnswer options();
    [[nodiscard]] OptionsAnswer set(const SaneSetting &setting);
    [[nodiscard]] StartedAnswer start();

    /// Puts more data of the frame behind those in `bytes`, up to `maxDataBytes` in all; good
    /// unless the frame ended, whole or not.
    [[nodiscard]] SaneStatus read(QByteArray &bytes);

    void cancel();

    /// Makes a call that hangs in the device come back, if the backend can do that.
    void interrupt();

private:
    SANE_Handle m_handle = nullptr;
    SaneOptions m_options;
    std::mutex m_interrupting; ///< Held while `m_handle` changes or is interrupted.
};

} // namespace scanengine
