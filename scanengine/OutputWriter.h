#pragma once

#include <QJsonObject>

#include <mutex>

namespace scanengine {

/// The one writer of the engine's output: each event becomes one whole line, handed to the reader
/// at once and never mixed with another.
///
/// Safe on any thread; events appear in the order of the calls. Once the reader is gone, every
/// further event is dropped without a word (SIGPIPE must be ignored by the program).
class OutputWriter {
public:
    /// `descriptor` stays the caller's.
    explicit OutputWriter(int descriptor) : m_descriptor(descriptor) {}

    void write(const QJsonObject &event);

private:
    std::mutex m_mutex;
    int m_descriptor;
    bool m_readerGone = false;
};

} // namespace scanengine
