#pragma once

#include <QByteArray>

#include <variant>

namespace scanengine {

/// Cuts the engine's input into lines. Used on one thread, which `next` blocks.
class CommandReader {
public:
    /// Longest line that is read, in bytes without the line feed. A command takes a few hundred.
    static constexpr qsizetype longestLine = 1024 * 1024;

    /// A line above `longestLine`: it was thrown away as it came, at no cost of memory.
    struct TooLong {};
    /// No line will come any more. A last line without its line feed is no line.
    struct End {};
    /// A line without its line feed.
    using Item = std::variant<QByteArray, TooLong, End>;

    /// The input also ends once `endDescriptor` has something to read, such as a signal; -1 for
    /// none. The descriptors stay the caller's.
    explicit CommandReader(int descriptor, int endDescriptor = -1)
        : m_descriptor(descriptor), m_endDescriptor(endDescriptor)
    {
    }

    /// Waits for the next line.
    [[nodiscard]] Item next();

private:
    [[nodiscard]] bool fill();

    int m_descriptor;
    int m_endDescriptor;
    QByteArray m_buffer;
};

} // namespace scanengine
