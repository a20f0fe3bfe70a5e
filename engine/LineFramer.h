#pragma once

#include <QByteArray>

#include <optional>

namespace velmor {

/// Longest line that is taken from the engine, in bytes. A list of a hundred thousand page files
/// stays far below it.
inline constexpr qsizetype maximumLineBytes = 64 * 1024 * 1024;

/// Cuts a stream of bytes into lines.
///
/// Chunks go in as they come, whole lines come out in order, without their line feeds. Empty lines
/// are skipped. A line above the limit is dropped up to its line feed while it still arrives, so
/// a framer that is emptied after each chunk holds at most the limit and one chunk. Time is linear
/// in the bytes, however they are cut.
class LineFramer {
public:
    explicit LineFramer(qsizetype maximumBytes = maximumLineBytes);

    void append(const QByteArray &chunk);

    /// The next whole line, or nothing until more bytes come.
    [[nodiscard]] std::optional<QByteArray> next();

private:
    void keepPartialLine();

    qsizetype m_maximumBytes;
    QByteArray m_bytes;
    qsizetype m_lineStart = 0;
    qsizetype m_searched = 0; ///< No line feed from `m_lineStart` up to here.
    bool m_dropping = false;  ///< The current line is above the limit.
};

} // namespace velmor
