#pragma once

#include "pipeline/renderer/RendererMessages.h"
#include "pipeline/workers/WorkerProcess.h"

#include <QImage>
#include <QThreadPool>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace velmor {

/// Draws PDF pages and reads their text in a worker process, which is started when first needed.
///
/// Any thread but the main one: a call waits its turn, as the worker serves one request at a time,
/// and then for the answer. Requests about text go before pictures. A worker that crashes, hangs
/// beyond the limits or answers nonsense is ended, and started anew for the next request. One that
/// was ended from outside between two requests, as for want of memory, costs no answer.
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

    /// The one of the whole program, closed when the application object goes. Its worker is
    /// `velmor-renderer`, see `workerProgram`; the environment variable VELMOR_RENDERER names
    /// another one.
    [[nodiscard]] static Renderer &shared();

    /// Ends the worker, also in the midst of a request. All requests fail from then on. Any thread.
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

    void whenFree(Turn turn, const std::function<void()> &work);
    [[nodiscard]] std::shared_ptr<WorkerProcess> worker();
    [[nodiscard]] std::optional<QImage> draw(const DrawRequest &request, QDeadlineTimer deadline);
    [[nodiscard]] std::optional<RendererAnswer> ask(const RendererRequest &request,
                                                    QDeadlineTimer deadline);
    [[nodiscard]] std::optional<QByteArray> exchange(const QByteArray &frame,
                                                     QDeadlineTimer deadline);

    const Setup m_setup;
    std::atomic<std::shared_ptr<WorkerProcess>> m_worker;
    std::atomic<bool> m_isClosed = false;
    bool m_hasServed = false; ///< The last request was answered.
    QThreadPool m_thread; ///< The one that talks to the worker. Goes first, as it uses the rest.
};

} // namespace velmor
