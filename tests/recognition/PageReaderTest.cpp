#include "pipeline/recognition/PageReader.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <thread>

namespace velmor {
namespace {

using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// Two paragraphs of grey bars, with room to part them.
QImage barPage()
{
    QImage page(2480, 3508, QImage::Format_Grayscale8);
    page.fill(255);
    for (int line = 0; line < 60; ++line) {
        const int top = 200 + line * 48 + (line >= 30 ? 100 : 0);
        for (int y = top; y < top + 32; ++y) {
            for (int x = 200; x < 2200; ++x) // strokes, as a picture would be passed over
                page.scanLine(y)[x] = x % 16 < 8 ? 0 : 255;
        }
    }
    return page;
}

class PageReaders : public testing::Test {
protected:
    PageReaders()
    {
        qputenv("FAKE_RECOGNIZER_MARK", m_folder.filePath(QStringLiteral("mark")).toUtf8());
    }

    static PageReader::Setup setup(std::chrono::milliseconds limit = std::chrono::minutes(1))
    {
        return {.workerProgram = QStringLiteral(FAKE_RECOGNIZER), .tryLimit = limit};
    }

    static void behave(const char *mode) { qputenv("FAKE_RECOGNIZER_MODE", mode); }

private:
    QTemporaryDir m_folder;
};

TEST_F(PageReaders, ShareAPageBetweenTwoWorkers)
{
    behave("reads");
    PageReader reader(setup());
    const auto lines = reader.read(barPage());
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_GT(lines[0].box.top(), 0.9) << "the upper half first, from the page's top";
    EXPECT_NEAR(lines[1].box.top(), 0.5, 0.1) << "then the lower, where it begins";
}

TEST_F(PageReaders, LookAgainAtWhatWasPassedOver)
{
    behave("reads-one-line"); // the first of each part it is shown
    PageReader reader(setup());
    const auto lines = reader.read(barPage());
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_NEAR(lines[0].box.top(), 1 - 232.0 / 3508, 0.002);
    EXPECT_NEAR(lines[1].box.top(), 1 - 280.0 / 3508, 0.002) << "in its place";
    EXPECT_NEAR(lines[2].box.top(), 0.5, 0.1);
}

TEST_F(PageReaders, ReadAPageAgainAsAWholeWhenAWorkerFails)
{
    const struct {
        const char *mode;
        std::chrono::milliseconds limit;
    } cases[] = {
        {"crashes-once", std::chrono::minutes(1)},
        {"floods-once",  std::chrono::minutes(1)},
        {"hangs-once",   std::chrono::seconds(2)},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.mode);
        QFile::remove(qEnvironmentVariable("FAKE_RECOGNIZER_MARK"));
        behave(c.mode);
        PageReader reader(setup(c.limit));
        const auto lines = reader.read(barPage());
        ASSERT_THAT(lines, SizeIs(1));
        EXPECT_EQ(lines[0].text, QStringLiteral("2480x3508"));
        EXPECT_THAT(reader.read(barPage()), SizeIs(2)) << "the failed worker was replaced";
    }
}

TEST_F(PageReaders, GiveUpOnAPageThatCrashesEveryWorkerButNotOnTheNext)
{
    behave("crashes");
    PageReader reader(setup());
    EXPECT_THAT(reader.read(barPage()), IsEmpty());
    behave("reads");
    EXPECT_THAT(reader.read(barPage()), Not(IsEmpty()));
}

TEST_F(PageReaders, AreSafeOnSeveralThreads)
{
    behave("reads");
    PageReader reader(setup());
    std::array<size_t, 4> counts{};
    std::vector<std::thread> threads;
    for (size_t &count : counts)
        threads.emplace_back([&] { count = reader.read(barPage()).size(); });
    std::ranges::for_each(threads, &std::thread::join);
    EXPECT_THAT(counts, testing::Each(2U));
}

TEST_F(PageReaders, SayWhyNothingCanBeRead)
{
    behave("reads");
    EXPECT_FALSE(PageReader(setup()).problem());

    PageReader missing({.workerProgram = QStringLiteral("/nowhere/velmor-recognizer")});
    EXPECT_THAT(missing.problem().value_or(QString()).toStdString(), testing::HasSubstr("missing"));
    EXPECT_THAT(missing.read(barPage()), IsEmpty());

    behave("exits");
    EXPECT_THAT(PageReader(setup()).problem().value_or(QString()).toStdString(),
                testing::HasSubstr("start"));
}

TEST_F(PageReaders, AskNobodyAboutBlankPages)
{
    behave("crashes");
    PageReader reader(setup());
    QImage blank(2480, 3508, QImage::Format_Grayscale8);
    blank.fill(240);
    EXPECT_THAT(reader.read(blank), IsEmpty());
    EXPECT_THAT(reader.read(QImage()), IsEmpty());
}

} // namespace
} // namespace velmor
