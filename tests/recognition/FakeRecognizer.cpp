// A worker that reads nothing and misbehaves as FAKE_RECOGNIZER_MODE says. To each page it answers
// one line that tells the page's size, such as "2480x3508".
//
// A mode that ends in "-once" applies to the first whole page or half of a page, not to a sample;
// the file FAKE_RECOGNIZER_MARK tells that it has happened.

#include "pipeline/recognizer/RecognizerMessages.h"
#include "pipeline/workers/FrameChannel.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace velmor;

std::string setting(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

/// True for the first caller of all processes.
bool isFirst()
{
    const int mark = open(setting("FAKE_RECOGNIZER_MARK").c_str(), O_CREAT | O_EXCL, 0600);
    return mark >= 0 && close(mark) == 0;
}

void misbehave(const std::string &mode)
{
    if (mode == "crashes")
        std::abort();
    if (mode == "hangs") {
        for (;;)
            pause();
    }
    if (mode == "floods")
        (void)send(STDIN_FILENO, "\xff\xff\xff\xff", 4, 0);
}

/// The uppermost ink and what is as high as the lines of the test's page.
QRect firstLine(const GreyPixels &page)
{
    const auto top = static_cast<int>(page.bytes.indexOf('\0') / page.size.width());
    return {0, top, page.size.width(), 32};
}

RecognizerAnswer firstLineOf(const TextRequest &request)
{
    return TextAnswer{{{{QStringLiteral("line"), firstLine(request.page), 95}}}};
}

RecognizerAnswer answerTo(const TextRequest &request)
{
    const QSize size = request.page.size;
    const QString text = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    return TextAnswer{{{{text, QRect(0, 0, 50, 20), 95}}}};
}

} // namespace

int main()
{
    std::string mode = setting("FAKE_RECOGNIZER_MODE");
    if (mode == "exits")
        return EXIT_FAILURE;
    const bool once = mode.ends_with("-once");
    if (once)
        mode.resize(mode.size() - std::string("-once").size());
    for (;;) {
        const auto frame =
            FrameChannel::read(STDIN_FILENO, maxRequestFrame, QDeadlineTimer::Forever);
        const auto request = frame ? decodeRequest(*frame) : std::nullopt;
        if (!request)
            return EXIT_SUCCESS;
        RecognizerAnswer answer;
        if (std::holds_alternative<LanguagesRequest>(*request))
            answer = LanguagesAnswer{{QStringLiteral("eng")}};
        if (const auto *text = std::get_if<TextRequest>(&*request)) {
            if (!once || (text->page.size.width() > 1000 && isFirst()))
                misbehave(mode);
            answer = mode == "reads-one-line" ? firstLineOf(*text) : answerTo(*text);
        }
        if (!FrameChannel::write(STDIN_FILENO, encode(answer), QDeadlineTimer::Forever))
            return EXIT_SUCCESS;
    }
}
