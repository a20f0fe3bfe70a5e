#pragma once

#include "scanengine/drivers/sane/SaneDriver.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QTemporaryDir>

#include <initializer_list>
#include <optional>
#include <sys/types.h>
#include <utility>

namespace scanengine {

/// What our `bad` backend is like, and how it fails. See BadBackend.cpp.
struct BadScanner {
    QString name = QStringLiteral("feeder"); ///< "bad:feeder" to SANE.
    QString fault = {};                      ///< "crash search"; empty for none.
    std::optional<int> sheets = {};          ///< Put into the feeder so far; else it never empties.
    bool hasFeeder = true;
    bool hasSensor = false;          ///< For paper in the feeder.
    std::optional<int> presses = {}; ///< Of the button so far, if there is one.
};

/// Scanners without hardware: a configuration of SANE that has nothing but its own `test` backend,
/// with one device, "test:0", and our `bad` one, whose device fails and changes on demand.
class TestScanners {
public:
    /// A setting of the test backend's configuration, as sane-test(5) names them.
    using Setting = std::pair<const char *, const char *>;

    explicit TestScanners(std::initializer_list<Setting> settings = {},
                          const QStringList &backends = {QStringLiteral("test")});

    /// How the worker is launched to find these scanners alone.
    [[nodiscard]] WorkerLaunch launch() const;

    [[nodiscard]] const BadScanner &bad() const { return m_bad; }
    /// Takes effect at once, also on a device at work.
    void setBad(const BadScanner &bad);
    /// Makes the bad backend fail from now on, "crash search"; or not any more, when empty.
    void setFault(const QString &fault);

    /// Whether the bad backend's device was opened and let go again.
    [[nodiscard]] bool wasClosed() const;

private:
    QTemporaryDir m_folder;
    BadScanner m_bad;
};

/// The worker processes that the process `parent` has started and not yet seen the end of.
[[nodiscard]] QList<pid_t> workersOf(pid_t parent);

/// Whether the process has ended, or its end only waits to be seen by its parent.
[[nodiscard]] bool hasEnded(pid_t process);

} // namespace scanengine
