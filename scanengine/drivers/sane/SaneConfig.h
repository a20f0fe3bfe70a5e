#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QTemporaryDir;

namespace scanengine {

/// The configuration of SANE's backends, as far as a search of one backend at a time needs it.

/// The folders that SANE looks for its configuration in, the first ones first. `setting` is the
/// value of the environment variable SANE_CONFIG_DIR.
[[nodiscard]] QStringList saneConfigFolders(const QString &setting);

/// The backends that are configured in `folders`, each once, in the order SANE searches them.
[[nodiscard]] QStringList configuredBackends(const QStringList &folders);

/// The backends that are worth a search for scanners, of those that are configured: without
/// cameras, and without `escl` beside the `airscan` that finds the same scanners.
[[nodiscard]] QStringList scannerBackends(const QStringList &configured);

/// Whether a backend's search asks the network alone, and so may run beside any other one. Two
/// others at once might disturb each other on the USB bus.
[[nodiscard]] bool isNetworkBackend(const QString &backend);

/// The backend that a device of this SANE name belongs to: "genesys:libusb:001:005" to "genesys".
[[nodiscard]] QString backendOf(const QString &deviceName);

/// A configuration in which only one backend is there, for as long as this lives. Each backend's
/// own settings stay those of the system.
class OneBackendConfig {
public:
    /// `setting` as for `saneConfigFolders`.
    explicit OneBackendConfig(const QString &setting);
    ~OneBackendConfig();

    /// The value of SANE_CONFIG_DIR for this configuration.
    [[nodiscard]] QString setting() const { return m_setting; }

    /// Makes `backend` the one that is there. False if that can't be written.
    [[nodiscard]] bool choose(const QString &backend);

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_setting;
};

} // namespace scanengine
