#include "preview/PagePictures.h"

#include "tests/Waiting.h"
#include "tests/preview/PreviewDocuments.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::ElementsAre;

PictureRequest wholePage(int page, QSize pixels = {200, 300})
{
    const QRect all(QPoint(0, 0), pixels);
    return {page, PictureExtent::whole, pixels, all, all};
}

/// The pictures of a document of so many pages, and which arrived, in order.
struct Drawn {
    explicit Drawn(int pages)
    {
        QObject::connect(&pictures, &PagePictures::arrived, &pictures,
                         [this](int page) { arrived.append(page); });
        pictures.setDocument(previewOf(QList<QStringList>(pages)));
    }

    [[nodiscard]] bool waitUntilIdle()
    {
        return waitUntil([this] { return !pictures.isBusy(); });
    }

    PagePictures pictures;
    QList<int> arrived;
};

TEST(PagePictures, ManyPagesNeedNoMoreMemoryThanAFew)
{
    Drawn drawn(40);
    constexpr qint64 picture = 200 * 300 * 4;
    drawn.pictures.setBudget(5 * picture);
    for (int page = 0; page < 40; ++page) {
        drawn.pictures.want({wholePage(page)}, PagePictures::Sharpness::asWanted);
        ASSERT_TRUE(drawn.waitUntilIdle());
        EXPECT_LE(drawn.pictures.bytes(), 5 * picture);
    }
    EXPECT_EQ(drawn.arrived.size(), 40);
    EXPECT_TRUE(drawn.pictures.picture(39, PictureExtent::whole));
    EXPECT_TRUE(drawn.pictures.picture(35, PictureExtent::whole));
    EXPECT_FALSE(drawn.pictures.picture(34, PictureExtent::whole));
}

TEST(PagePictures, WhatScrolledAwayIsNotDrawn)
{
    Drawn drawn(9);
    drawn.pictures.want({wholePage(0), wholePage(1), wholePage(2)},
                        PagePictures::Sharpness::asWanted);
    drawn.pictures.want({wholePage(7), wholePage(6)}, PagePictures::Sharpness::asWanted);
    ASSERT_TRUE(drawn.waitUntilIdle());
    EXPECT_THAT(drawn.arrived, ElementsAre(0, 7, 6));
}

TEST(PagePictures, AnOlderPictureServesWhileTheScaleMoves)
{
    Drawn drawn(2);
    drawn.pictures.want({wholePage(0)}, PagePictures::Sharpness::asWanted);
    ASSERT_TRUE(drawn.waitUntilIdle());
    const QList<PictureRequest> larger = {wholePage(0, {400, 600}), wholePage(1, {400, 600})};
    drawn.pictures.want(larger, PagePictures::Sharpness::anyPicture);
    ASSERT_TRUE(drawn.waitUntilIdle());
    EXPECT_THAT(drawn.arrived, ElementsAre(0, 1));
    EXPECT_EQ(drawn.pictures.picture(0, PictureExtent::whole)->image.size(), QSize(200, 300));
    drawn.pictures.want(larger, PagePictures::Sharpness::asWanted);
    ASSERT_TRUE(drawn.waitUntilIdle());
    EXPECT_EQ(drawn.pictures.picture(0, PictureExtent::whole)->image.size(), QSize(400, 600));
}

TEST(PagePictures, WhatCantBeDrawnIsTriedOnce)
{
    Drawn drawn(2);
    // The first is beyond all pixel limits, the second alone more than is kept.
    drawn.pictures.setBudget(1'000'000);
    drawn.pictures.want({wholePage(0, {30'000, 30'000}), wholePage(1, {800, 1200})},
                        PagePictures::Sharpness::asWanted);
    ASSERT_TRUE(drawn.waitUntilIdle());
    EXPECT_THAT(drawn.arrived, ElementsAre(0, 1));
    const PagePicture *const failed = drawn.pictures.picture(0, PictureExtent::whole);
    EXPECT_TRUE(!failed || failed->image.isNull());
}

TEST(PagePictures, AReplacedDocumentsPicturesNeverArrive)
{
    Drawn drawn(3);
    drawn.pictures.want({wholePage(2)}, PagePictures::Sharpness::asWanted);
    drawn.pictures.setDocument(previewOf({{}, {}}));
    drawn.pictures.want({wholePage(1)}, PagePictures::Sharpness::asWanted);
    ASSERT_TRUE(drawn.waitUntilIdle());
    EXPECT_THAT(drawn.arrived, ElementsAre(1));
    EXPECT_FALSE(drawn.pictures.picture(2, PictureExtent::whole));
}

} // namespace
} // namespace velmor
