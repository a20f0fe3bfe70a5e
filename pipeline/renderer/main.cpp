// The worker that draws PDF pages and reads their text: answers requests until the application is
// gone. A program of its own so that a page that crashes PDFium, keeps it busy for ever or wants
// all memory costs the application that page and no more.

#include "pipeline/renderer/PdfiumPage.h"
#include "pipeline/workers/WorkerLoop.h"

#include <sys/resource.h>

namespace {

using namespace velmor;

/// Three pictures of the largest size, and what PDFium needs of its own.
constexpr rlim_t mostMemory = rlim_t{5} << 30;

void limitMemory()
{
#ifndef __SANITIZE_ADDRESS__ // which takes terabytes
    const rlimit limit{mostMemory, mostMemory};
    setrlimit(RLIMIT_DATA, &limit);
#endif
}

/// Takes the sender of frames, and answers as it does.
struct Answering {
    const FrameSink &reply;

    bool operator()(const DrawRequest &request) const
    {
        PdfiumPage page(request.pdf);
        const QImage picture = page.isOpen() ? page.picture(request.size) : QImage();
        if (picture.isNull())
            return reply(encode(RendererAnswer(NoPageAnswer())));
        const auto pixels = QByteArray::fromRawData(
            reinterpret_cast<const char *>(picture.constBits()), picture.sizeInBytes());
        return reply(encode(RendererAnswer(DrawnAnswer{picture.size()}))) && reply(pixels);
    }
    bool operator()(const PageTextRequest &request) const
    {
        PdfiumPage page(request.pdf);
        return reply(encode(page.isOpen() ? RendererAnswer(page.text(request)) : NoPageAnswer()));
    }
    bool operator()(const TextPositionRequest &request) const
    {
        PdfiumPage page(request.pdf);
        return reply(
            encode(page.isOpen() ? RendererAnswer(page.textPosition(request)) : NoPageAnswer()));
    }
};

} // namespace

int main()
{
    limitMemory();
    return runWorker(maxRendererRequest, [](const QByteArray &frame, const FrameSink &reply) {
        const auto request = decodeRendererRequest(frame);
        return request && std::visit(Answering{reply}, *request);
    });
}
