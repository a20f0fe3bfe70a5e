#include "pipeline/Renderer.h"

#include "pipeline/workers/WorkerProgram.h"

#include <QCoreApplication>

#include <exception>
#include <future>

namespace velmor {

namespace {

/// An image on `pixels`, without a copy. Null unless they are as many as they should be.
QImage imageOf(QByteArray pixels, QSize size)
{
    if (pixels.size() != pictureBytes(size))
        return {};
    auto *const owner = new QByteArray(std::move(pixels)); // owned by the image
    return {reinterpret_cast<uchar *>(owner->data()),
            size.width(),
            size.height(),
            qsizetype{4} * size.width(),
            QImage::Format_RGB32,
            [](void *data) { delete static_cast<QByteArray *>(data); },
            owner};
}

template <typename Answer> std::optional<Answer> expected(std::optional<RendererAnswer> answer)
{
    if (answer && std::holds_alternative<Answer>(*answer))
        return std::get<Answer>(std::move(*answer));
    return std::nullopt;
}

} // namespace

Renderer::Renderer(Setup setup) : m_setup(std::move(setup))
{
    m_threads.setMaxThreadCount(static_cast<int>(m_lanes.size()));
    m_threads.setExpiryTimeout(-1);
}

Renderer &Renderer::shared()
{
    static Renderer renderer(
        {.workerProgram = workerProgram(QStringLiteral("velmor-renderer"), "VELMOR_RENDERER")});
    static const bool closesInTime = [] {
        // Before the application waits for the threads that wait for a page.
        qAddPostRoutine([] { renderer.close(); });
        return true;
    }();
    Q_UNUSED(closesInTime)
    return renderer;
}

void Renderer::close()
{
    m_isClosed = true;
    for (const Lane &lane : m_lanes) {
        if (const auto worker = lane.process.load())
            worker->kill();
    }
}

std::optional<QImage> Renderer::picture(const QByteArray &pdf, QSize size, Use use)
{
    const auto limit = use == Use::work ? m_setup.pictureLimit : m_setup.glimpseLimit;
    std::optional<QImage> picture;
    whenFree(Turn::pictures,
             [&](Lane &lane) { picture = draw(lane, {pdf, size}, QDeadlineTimer(limit)); });
    return picture;
}

std::optional<PageTextAnswer> Renderer::text(const PageTextRequest &request)
{
    std::optional<PageTextAnswer> text;
    whenFree(Turn::questions, [&](Lane &lane) {
        text = expected<PageTextAnswer>(ask(lane, request, QDeadlineTimer(m_setup.textLimit)));
    });
    return text;
}

std::optional<TextPositionAnswer> Renderer::textPosition(const TextPositionRequest &request)
{
    std::optional<TextPositionAnswer> position;
    whenFree(Turn::questions, [&](Lane &lane) {
        position =
            expected<TextPositionAnswer>(ask(lane, request, QDeadlineTimer(m_setup.textLimit)));
    });
    return position;
}

void Renderer::whenFree(Turn turn, const std::function<void(Lane &)> &work)
{
    // Not a QFuture: whoever waits for one runs its task himself, if it hasn't begun. Shared, as
    // the thread may still be about to leave it when the caller has gone on.
    const auto promise = std::make_shared<std::promise<void>>();
    const std::future<void> done = promise->get_future();
    const auto task = [this, promise, &work] {
        Lane &lane = takeLane();
        try {
            work(lane);
        } catch (const std::exception &) { // want of memory
            lane.process.store(nullptr);
        }
        lane.isTaken = false;
        promise->set_value();
    };
    m_threads.start(task, turn == Turn::questions ? 1 : 0);
    done.wait();
}

/// There are no more threads than lanes, so one is free; the first, as long as one will do.
Renderer::Lane &Renderer::takeLane()
{
    for (;;) {
        for (Lane &lane : m_lanes) {
            if (!lane.isTaken.exchange(true))
                return lane;
        }
    }
}

std::optional<QImage> Renderer::draw(Lane &lane, const DrawRequest &request,
                                     QDeadlineTimer deadline)
{
    const auto answer = expected<DrawnAnswer>(ask(lane, request, deadline));
    if (!answer)
        return std::nullopt;
    const auto worker = lane.process.load();
    auto pixels = worker ? worker->receive(pictureBytes(request.size), deadline) : std::nullopt;
    const QImage image = pixels && answer->size == request.size
                             ? imageOf(std::move(*pixels), request.size)
                             : QImage();
    if (image.isNull()) {
        lane.process.store(nullptr);
        return std::nullopt;
    }
    return image;
}

std::shared_ptr<WorkerProcess> Renderer::workerOf(Lane &lane)
{
    auto worker = lane.process.load();
    if (!worker && !m_isClosed) {
        worker = WorkerProcess::start(m_setup.workerProgram);
        lane.process = worker;
        if (worker && m_isClosed)
            worker->kill();
    }
    return worker;
}

std::optional<RendererAnswer> Renderer::ask(Lane &lane, const RendererRequest &request,
                                            QDeadlineTimer deadline)
{
    const QByteArray question = encode(request);
    // A worker that served the last request and is gone now may not have ended for this one.
    const bool mayTryAgain = lane.hasServed && lane.process.load();
    std::optional<QByteArray> frame = exchange(lane, question, deadline);
    if (!frame && mayTryAgain && !deadline.hasExpired()) {
        lane.process.store(nullptr);
        frame = exchange(lane, question, deadline);
    }
    std::optional<RendererAnswer> answer = frame ? decodeRendererAnswer(*frame) : std::nullopt;
    lane.hasServed = answer.has_value();
    if (!answer)
        lane.process.store(nullptr);
    return answer;
}

std::optional<QByteArray> Renderer::exchange(Lane &lane, const QByteArray &frame,
                                             QDeadlineTimer deadline)
{
    const auto asked = workerOf(lane);
    const bool isSent = asked && asked->send(frame, deadline);
    return isSent ? asked->receive(maxRendererAnswer, deadline) : std::nullopt;
}

} // namespace velmor
