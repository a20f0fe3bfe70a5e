#pragma once

#include "scanengine/PageFiles.h"
#include "scanengine/Result.h"
#include "scanengine/TaskQueue.h"

#include <QImage>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <variant>

namespace scanengine {

/// A page that carries nothing and is left out.
struct BlankPage {};

/// What becomes of a captured sheet: a finished page, none, or none for a reason.
using PageOutcome = std::variant<QImage, BlankPage, Fault>;

/// Makes finished pages of captured sheets and saves them, beside the capture of further sheets:
/// one page is saved while the next is finished. Pages are saved in the order of their sheets.
///
/// After a fault nothing more is saved. One thread uses the line; see each member for calls back.
class PageLine {
public:
    /// The most pages that are in the line. At 600 dpi each takes 140 MB.
    static constexpr int mostPages = 3;

    /// Is called on a thread of the line.
    using Finish = std::function<PageOutcome(QImage sheet)>;

    struct Events {
        std::function<void(qsizetype number)> saved; ///< Pages count from 1; on the line's thread.
        std::function<void()> failed;                ///< At the fault, once; on the line's thread.
    };

    /// `files` outlives the line, and is its own until `drain` was called.
    PageLine(PageFiles &files, Finish finish, Events events);
    /// Waits for what is in the line.
    ~PageLine();
    PageLine(const PageLine &) = delete;
    PageLine &operator=(const PageLine &) = delete;

    /// Puts a sheet into the line, and waits for room there. Does nothing after a fault.
    void add(QImage sheet);

    /// Waits until the line is empty. Why it stopped working, if it did.
    std::optional<Fault> drain();

    /// How many blank pages were left out so far. Call after `drain`.
    [[nodiscard]] int blankPages() const { return m_blankPages; }

private:
    void finishSheet(QImage sheet);
    void settle(const PageOutcome &outcome);
    void save(const QImage &page);
    void leave();
    void fail(const Fault &fault);
    [[nodiscard]] bool hasFailed();

    PageFiles &m_files;
    Finish m_finish;
    Events m_events;
    std::mutex m_mutex;
    std::condition_variable m_left;
    int m_inside = 0;
    int m_blankPages = 0;
    std::optional<Fault> m_fault;
    TaskQueue m_saving;
    TaskQueue m_finishing; ///< Last, so that it ends before what it hands pages to.
};

} // namespace scanengine
