#pragma once

#include "scanengine/CommandReader.h"
#include "scanengine/OutputWriter.h"
#include "scanengine/Protocol.h"
#include "scanengine/SamplePreviews.h"
#include "scanengine/TaskQueue.h"
#include "scanengine/drivers/DriverList.h"

#include <atomic>

namespace scanengine {

/// Takes commands and has them carried out, without ever making the next command wait: scans,
/// calibrations and adjustments one after the other on one thread, device searches on another.
class Engine {
public:
    /// `output` outlives the engine.
    Engine(DriverList drivers, OutputWriter &output);

    /// Serves commands from `input` until "quit" or its end. What is running is told to stop then,
    /// and given some seconds; what is waiting is dropped after "quit", and answered otherwise.
    ///
    /// False if something still runs, held up inside a device: the process then has to leave
    /// without destroying the engine.
    [[nodiscard]] bool serve(CommandReader &input);

private:
    enum class Ending { quit, endOfInput };

    [[nodiscard]] Ending takeCommands(CommandReader &input);
    void start(const Command &command);
    void startSearch();
    void startJob(const Command &command);
    void run(const Command &command, const std::stop_token &stop);
    void refuse(const QString &message);

    DriverList m_drivers;
    OutputWriter &m_output;
    std::atomic<bool> m_isSearching = false;
    SamplePreviews m_previews; ///< Used by jobs alone.
    TaskQueue m_searches;
    TaskQueue m_jobs;
};

} // namespace scanengine
