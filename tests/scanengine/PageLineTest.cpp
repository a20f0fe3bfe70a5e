#include "scanengine/PageLine.h"

#include "TestImages.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <new>
#include <vector>

namespace scanengine {
namespace {

QImage sheet(int level)
{
    return greyPage({8, 8}, level, 300);
}

class PageLineTest : public testing::Test {
protected:
    [[nodiscard]] PageLine::Events events()
    {
        return {[this](qsizetype number) { m_saved.push_back(number); },
                [this] {
                    ++m_failures;
                }};
    }

    [[nodiscard]] QList<int> savedLevels() const
    {
        QList<int> levels;
        for (const QString &path : m_files.paths())
            levels.append(greyLevel(QImage(path)));
        return levels;
    }

    QTemporaryDir m_folder;
    PageFiles m_files{m_folder.filePath(QStringLiteral("a.pdf"))};
    std::vector<qsizetype> m_saved;
    int m_failures = 0;
};

TEST_F(PageLineTest, PagesKeepTheirOrderAndBlankOnesGetNoNumber)
{
    PageLine line(
        m_files,
        [](const QImage &image) -> PageOutcome {
            if (greyLevel(image) % 3 == 0)
                return BlankPage{};
            return image;
        },
        events());
    for (int level = 1; level <= 10; ++level)
        line.add(sheet(level));
    EXPECT_FALSE(line.drain());
    EXPECT_EQ(savedLevels(), (QList<int>{1, 2, 4, 5, 7, 8, 10}));
    EXPECT_EQ(m_saved, (std::vector<qsizetype>{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(line.blankPages(), 3);
    EXPECT_EQ(m_failures, 0);
}

TEST_F(PageLineTest, AFaultStopsTheLineAndKeepsThePagesBefore)
{
    const struct {
        const char *what;
        PageLine::Finish finish;
    } cases[] = {
        {"a fault",
         [](const QImage &) {
             return Fault{QStringLiteral("no")};
         }},
        {"memory running out",
         [](const QImage &) -> PageOutcome {
             throw std::bad_alloc();
         }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        m_failures = 0;
        PageFiles files(m_folder.filePath(QStringLiteral("b.pdf")));
        PageLine line(
            files,
            [&](const QImage &image) -> PageOutcome {
                return greyLevel(image) == 3 ? c.finish(image) : PageOutcome(image);
            },
            events());
        for (int level = 1; level <= 10; ++level)
            line.add(sheet(level));
        EXPECT_TRUE(line.drain());
        EXPECT_EQ(files.paths().size(), 2);
        EXPECT_EQ(m_failures, 1);
    }
}

TEST_F(PageLineTest, AFolderThatVanishesIsAFault)
{
    PageLine line(m_files, [](const QImage &image) { return image; }, events());
    line.add(sheet(1));
    EXPECT_FALSE(line.drain());
    ASSERT_TRUE(m_folder.remove());
    line.add(sheet(2));
    EXPECT_TRUE(line.drain());
    EXPECT_EQ(m_failures, 1);
}

TEST_F(PageLineTest, TakesSheetsBesideItsWorkButNoMoreThanItHasRoomFor)
{
    std::promise<void> permission;
    const std::shared_future<void> permitted = permission.get_future().share();
    PageLine line(
        m_files,
        [permitted](const QImage &image) {
            permitted.wait();
            return image;
        },
        events());
    for (int number = 1; number <= PageLine::mostPages; ++number)
        line.add(sheet(number));
    std::atomic<bool> isAdded = false;
    auto oneMore = std::async(std::launch::async, [&] {
        line.add(sheet(100));
        isAdded = true;
    });
    EXPECT_FALSE(isAdded);
    permission.set_value();
    oneMore.wait();
    EXPECT_FALSE(line.drain());
    EXPECT_EQ(savedLevels().size(), PageLine::mostPages + 1);
}

} // namespace
} // namespace scanengine
