#pragma once

#include "engine/EngineCommand.h"
#include "engine/EngineEvent.h"
#include "engine/EngineSearch.h"
#include "engine/LineFramer.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QProcess;

namespace velmor {

/// Owns the scanner engine's process and carries commands to it and events from it, without
/// knowing what they mean.
///
/// Lives on the main thread, needs an event loop there and never blocks it; the destructor alone
/// waits, as it says. A client runs one process: made, launched, and then stopped or ended, which
/// is final. The engine inherits environment and working folder, gets no arguments, and what it
/// writes to standard error is thrown away. Receivers of the signals may call every function; a
/// client is deleted from one of them by `deleteLater` only.
class ScanEngineClient : public QObject {
    Q_OBJECT

public:
    explicit ScanEngineClient(QObject *parent = nullptr);

    /// Stops the engine. One that still runs has a second to obey the termination request and is
    /// killed then; one that outlives even that by half a second, as a process inside a driver
    /// call can, is left behind.
    ~ScanEngineClient() override;

    /// Finds the engine in `places` and begins to launch it. Answers the reason if that fails at
    /// once, "scanengine executable not found in bundle" when there is none; otherwise nothing,
    /// and `launchFailed` may still follow. After a failure it may be called again; on a client
    /// that was launched, stopped or ended it does nothing.
    [[nodiscard]] std::optional<QString> start(const EnginePlaces &places = enginePlaces());

    /// Sends one command; allowed from `start` on, without waiting for the engine.
    ///
    /// Never reports failure: a command for an engine that is not there is lost, and so is one
    /// that would make more than `maximumPendingBytes` wait for an engine that does not read.
    void send(const EngineCommand &command);

    /// Sends "quit" and the termination request. No event comes any more, also none that the
    /// engine had already written; nor does `ended`. Harmless on a client that is not launched.
    void stop();

    /// Commands that wait to be read by the engine are bounded to this many bytes.
    static constexpr qint64 maximumPendingBytes = 1024 * 1024;

Q_SIGNALS:
    /// One event, in the order of the stream. Lines that are no event cost only themselves.
    void eventReceived(const velmor::EngineEvent &event);

    /// The system refused to launch what `start` found; `reason` is the system's own.
    void launchFailed(const QString &reason);

    /// The engine exited or crashed by itself, and its last event has been delivered.
    void ended();

private:
    enum class Phase { made, launching, running, stopped, ended };

    [[nodiscard]] bool isLaunched() const;
    void reportLaunchFailure();
    void deliverEvents();
    void finish();

    std::unique_ptr<QProcess> m_process;
    LineFramer m_lines;
    Phase m_phase = Phase::made;
};

} // namespace velmor
