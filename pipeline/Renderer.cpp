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
    m_thread.setMaxThreadCount(1);
    m_thread.setExpiryTimeout(-1);
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
    if (const auto worker = m_worker.load())
        worker->kill();
}

std::optional<QImage> Renderer::picture(const QByteArray &pdf, QSize size, Use use)
{
    const auto limit = use == Use::work ? m_setup.pictureLimit : m_setup.glimpseLimit;
    std::optional<QImage> picture;
    whenFree(Turn::pictures, [&] { picture = draw({pdf, size}, QDeadlineTimer(limit)); });
    return picture;
}

std::optional<PageTextAnswer> Renderer::text(const PageTextRequest &request)
{
    std::optional<PageTextAnswer> text;
    whenFree(Turn::questions, [&] {
        text = expected<PageTextAnswer>(ask(request, QDeadlineTimer(m_setup.textLimit)));
    });
    return text;
}

std::optional<TextPositionAnswer> Renderer::textPosition(const TextPositionRequest &request)
{
    std::optional<TextPositionAnswer> position;
    whenFree(Turn::questions, [&] {
        position = expected<TextPositionAnswer>(ask(request, QDeadlineTimer(m_setup.textLimit)));
    });
    return position;
}

void Renderer::whenFree(Turn turn, const std::function<void()> &work)
{
    // Not a QFuture: whoever waits for one runs its task himself, if it hasn't begun. Shared, as
    // the thread may still be about to leave it when the caller has gone on.
    const auto promise = std::make_shared<std::promise<void>>();
    const std::future<void> done = promise->get_future();
    const auto task = [this, promise, &work] {
        try {
            work();
        } catch (const std::exception &) { // want of memory
            m_worker.store(nullptr);
        }
        promise->set_value();
    };
    m_thread.start(task, turn == Turn::questions ? 1 : 0);
    done.wait();
}

std::optional<QImage> Renderer::draw(const DrawRequest &request, QDeadlineTimer deadline)
{
    const auto answer = expected<DrawnAnswer>(ask(request, deadline));
    if (!answer)
        return std::nullopt;
    const auto worker = m_worker.load();
    auto pixels = worker ? worker->receive(pictureBytes(request.size), deadline) : std::nullopt;
    const QImage image = pixels && answer->size == request.size
                             ? imageOf(std::move(*pixels), request.size)
                             : QImage();
    if (image.isNull()) {
        m_worker.store(nullptr);
        return std::nullopt;
    }
    return image;
}

std::shared_ptr<WorkerProcess> Renderer::worker()
{
    auto worker = m_worker.load();
    if (!worker && !m_isClosed) {
        worker = WorkerProcess::start(m_setup.workerProgram);
        m_worker = worker;
        if (worker && m_isClosed)
            worker->kill();
    }
    return worker;
}

std::optional<RendererAnswer> Renderer::ask(const RendererRequest &request, QDeadlineTimer deadline)
{
    const QByteArray question = encode(request);
    // A worker that served the last request and is gone now may not have ended for this one.
    const bool mayTryAgain = m_hasServed && m_worker.load();
    std::optional<QByteArray> frame = exchange(question, deadline);
    if (!frame && mayTryAgain && !deadline.hasExpired()) {
        m_worker.store(nullptr);
        frame = exchange(question, deadline);
    }
    std::optional<RendererAnswer> answer = frame ? decodeRendererAnswer(*frame) : std::nullopt;
    m_hasServed = answer.has_value();
    if (!answer)
        m_worker.store(nullptr);
    return answer;
}

std::optional<QByteArray> Renderer::exchange(const QByteArray &frame, QDeadlineTimer deadline)
{
    const auto asked = worker();
    const bool isSent = asked && asked->send(frame, deadline);
    return isSent ? asked->receive(maxRendererAnswer, deadline) : std::nullopt;
}

} // namespace velmor
