#pragma once

#include "tests/scanners/SaneFolder.h"

#include <QProcess>

namespace scanengine {

/// A saned that lends out SANE's own test scanner, on an address of this computer that is this
/// test's alone: its port is always the same.
class ScanServer {
public:
    /// `testSettings` is the content of "test.conf". Waits until the server answers.
    explicit ScanServer(const QByteArray &testSettings);
    ~ScanServer();
    ScanServer(const ScanServer &) = delete;
    ScanServer &operator=(const ScanServer &) = delete;

    /// "127.4.5.6"
    [[nodiscard]] QString host() const { return m_host; }

    /// Ends it in the middle of whatever it does.
    void kill();

private:
    SaneFolder m_folder;
    QString m_host;
    QProcess m_process;
};

} // namespace scanengine
