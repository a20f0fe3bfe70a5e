#pragma once

#include "pipeline/renderer/RendererMessages.h"
#include "pipeline/workers/WorkerProcess.h"

#include <QImage>
#include <QThreadPool>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace velmor {

/// Draws PDF pages and reads their text in two worker processes, which are started when first
/// needed.
///
/// Any thread but the main one: a call waits for its turn at a worker, which serves one request at
/// a time, and then for the answer. Requests about text go before pictures. A worker that crashes,
/// hangs beyond the limits or answers nonsense is ended, and started anew for the next request. One
/// that was ended from outside between two requests, as for want of memory, costs no answer.
class Renderer {
public:
    struct Setup {
        QString workerProgram; ///< A path.
        /// How long a request may take.
        std::chrono::milliseconds pictureLimit = std::chrono::seconds(30);
        std::chrono::milliseconds glimpseLimit = std::chrono::seconds(10);
        std::chrono::milliseconds textLimit = std::chrono::seconds(10);
    };

    explicit Renderer(Setup setup);

    /// What a picture is for. A page that is worked on is worth the longest wait; one that is only
    /// shown must not hold up the others.
    enum class Use { work, glimpse };

    /// The one of the whole program, closed when the application object goes. Its worker program is
    /// `velmor-renderer`, see `workerProgram`; the environment variable VELMOR_RENDERER names
    /// another one.
    [[nodiscard]] static Renderer &shared();

    /// Ends the workers, also in the midst of a request. All requests fail from then on. Any
    /// thread.
    void close();

    /// The first page of the file `pdf` as shown, rotation included, on white, at exactly `size`
    /// pixels. The caller bounds `size`. Nothing if it can't be drawn.
    [[nodiscard]] std::optional<QImage> picture(const QByteArray &pdf, QSize size,
                                                Use use = Use::work);

    /// Nothing if the page can't be read.
    [[nodiscard]] std::optional<PageTextAnswer> text(const PageTextRequest &request);
    [[nodiscard]] std::optional<TextPositionAnswer>
    textPosition(const TextPositionRequest &request);

private:
    enum class Turn { pictures, questions };

    /// A worker and what is known of it. Used by one thread at a time, but for `process`.
    struct Lane {
        std::atomic<bool> isTaken = false;
        std::atomic<std::shared_ptr<WorkerProcess>> process; ///< Null until it is needed.
        bool hasServed = false;                              ///< It answered the last request.
    };

    void whenFree(Turn turn, const std::function<void(Lane &)> &work);
    [[nodiscard]] Lane &takeLane();
    [[nodiscard]] std::shared_ptr<WorkerProcess> workerOf(Lane &lane);
    [[nodiscard]] std::optional<QImage> draw(Lane &lane, const DrawRequest &request,
                                             QDeadlineTimer deadline);
    [[nodiscard]] std::optional<RendererAnswer> ask(Lane &lane, const RendererRequest &request,
                                                    QDeadlineTimer deadline);
    [[nodiscard]] std::optional<QByteArray> exchange(Lane &lane, const QByteArray &frame,
                                                     QDeadlineTimer deadline);

    const Setup m_setup;
    /// Two, so that a page that takes long doesn't hold up all others.
    std::array<Lane, 2> m_lanes;
    std::atomic<bool> m_isClosed = false;
    QThreadPool m_threads; ///< One for each lane. Goes first, as it uses the rest.
};

} // namespace velmor
