#include "editor/CropBoxes.h"

#include "editor/EditorWords.h"
#include "tests/Printers.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Where the image lies: 10 points for each hundredth of its width, 5 of its height.
const QRectF rect(50, 20, 1000, 500);

QPointF at(double x, double y)
{
    return denorm({x, y}, rect);
}

void click(CropBoxes &boxes, QPointF place)
{
    boxes.dragTo(place, place, rect);
    boxes.release(place, rect);
}

CropBoxes withBox()
{
    CropBoxes boxes;
    for (const QPointF corner : {at(0.8, 0.9), at(0.2, 0.1), at(0.8, 0.1), at(0.2, 0.9)})
        click(boxes, corner);
    return boxes;
}

const Quad upright{
    {QPointF(0.2, 0.1), QPointF(0.8, 0.1), QPointF(0.8, 0.9), QPointF(0.2, 0.9)}
};

QString told(const CropBoxes &boxes)
{
    return EditorWords::instruction(boxes);
}

TEST(CropBoxes, AReleaseIsTheLastMove)
{
    CropBoxes boxes = withBox();
    boxes.dragTo(at(0.8, 0.9), at(0.8, 0.9), rect);
    boxes.release(at(0.7, 0.6), rect);
    EXPECT_EQ(boxes.cornerAt({0, 2}), QPointF(0.7, 0.6));
    boxes.dragTo(at(0.5, 0.5), at(0.5, 0.5), rect);
    boxes.release(at(0.51, 0.5), rect);
    EXPECT_THAT(boxes.pending(), IsEmpty()) << "10 points are no click";
}

TEST(CropBoxes, AnAcceptedProposalThatIsTakenBackIsOneAgain)
{
    CropBoxes boxes;
    boxes.propose(upright);
    for (int times = 0; times < 2; ++times) {
        EXPECT_TRUE(boxes.acceptProposal());
        boxes.nudge({5, 5}, rect);
        boxes.removeLast();
        EXPECT_THAT(boxes.boxes(), IsEmpty());
        EXPECT_EQ(boxes.proposal(), upright);
    }
    boxes.acceptProposal();
    click(boxes, at(0.5, 0.5));
    boxes.removeLast();
    boxes.removeLast();
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_FALSE(boxes.proposal()) << "something else was clicked";
}

TEST(CropBoxes, FourClicksInAnyOrderMakeABox)
{
    CropBoxes boxes;
    EXPECT_EQ(told(boxes), u"Click the 4 corners of a document");
    boxes = withBox();
    EXPECT_THAT(boxes.boxes(), ElementsAre(upright));
    EXPECT_THAT(boxes.pending(), IsEmpty());
    EXPECT_EQ(told(boxes), u"1 box — drag corners to adjust, add more, then Apply");
    click(boxes, at(0.5, 0.5));
    EXPECT_THAT(boxes.pending(), ElementsAre(QPointF(0.5, 0.5)));
    EXPECT_EQ(told(boxes), u"Corner 1/4 — keep clicking");
    for (const double x : {0.1, 0.2, 0.3})
        click(boxes, at(x, 0));
    EXPECT_EQ(told(boxes), u"2 boxes — drag corners to adjust, add more, then Apply");
}

TEST(CropBoxes, AClickIsAGestureOfAtMostThreePointsOnTheImage)
{
    const struct {
        const char *what;
        QPointF press, release;
        bool isClick;
    } cases[] = {
        {"three points on each axis", at(0.5, 0.5), at(0.5, 0.5) + QPointF(3, -3), true},
        {"more on one axis", at(0.5, 0.5), at(0.5, 0.5) + QPointF(0, 3.5), false},
        {"the image's very corner", at(1, 1), at(1, 1), true},
        {"beside the image", at(-0.001, 0.5), at(-0.001, 0.5), false},
        {"pressed inside, let go there", at(0, 0.5), at(-0.002, 0.5), false},
    };
    for (const auto &c : cases) {
        CropBoxes boxes;
        boxes.dragTo(c.press, c.press, rect);
        boxes.dragTo(c.press, c.release, rect);
        boxes.release(c.release, rect);
        EXPECT_THAT(boxes.pending(), SizeIs(c.isClick ? 1 : 0)) << c.what;
        EXPECT_FALSE(boxes.didDrag());
    }
    CropBoxes boxes;
    boxes.dragTo(at(0.5, 0.5), at(0.6, 0.5), rect);
    boxes.dragTo(at(0.5, 0.5), at(0.5, 0.5), rect);
    boxes.release(at(0.5, 0.5), rect);
    EXPECT_THAT(boxes.pending(), IsEmpty()) << "there and back is a drag";
}

TEST(CropBoxes, APressNearACornerDragsItWhereThePointerGoes)
{
    CropBoxes boxes = withBox();
    const QPointF near = at(0.2, 0.1) + QPointF(11.9, 0);
    boxes.dragTo(near, near, rect);
    EXPECT_EQ(boxes.dragTarget(), (BoxCorner{0, 0}));
    EXPECT_EQ(boxes.boxes()[0].corners[0], norm(near, rect)) << "at once, without a threshold";
    boxes.dragTo(near, at(1.5, -1), rect);
    EXPECT_EQ(boxes.boxes()[0].corners[0], QPointF(1, 0)) << "within the image; not put in order";
    boxes.release(at(1.5, -1), rect);
    EXPECT_FALSE(boxes.dragTarget());
    EXPECT_THAT(boxes.pending(), IsEmpty());

    boxes.addBox(QRectF(at(0.7, -0.3), at(1.3, 0.3)), rect);
    EXPECT_EQ(boxes.hitCorner(at(1, 0), rect), (BoxCorner{0, 0})) << "an older box has the first";

    const QPointF beside = at(0.8, 0.9) + QPointF(12, 0);
    EXPECT_FALSE(boxes.hitCorner(beside, rect));
    boxes.dragTo(beside, beside, rect);
    boxes.dragTo(beside, beside + QPointF(0, 10), rect);
    boxes.dragTo(beside, at(0.8, 0.9), rect);
    boxes.release(at(0.8, 0.9), rect);
    EXPECT_EQ(boxes.boxes()[0].corners[2], upright.corners[2]) << "begun beside all corners";
}

TEST(CropBoxes, TakesBackCornersThenWholeBoxes)
{
    CropBoxes boxes = withBox();
    click(boxes, at(0.5, 0.5));
    click(boxes, at(0.6, 0.5));
    boxes.removeLast();
    boxes.removeLast();
    EXPECT_THAT(boxes.pending(), IsEmpty());
    EXPECT_THAT(boxes.boxes(), SizeIs(1));
    boxes.cycle(CropBoxes::Direction::forward);
    boxes.removeLast();
    boxes.removeLast();
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_FALSE(boxes.currentCorner());
}

TEST(CropBoxes, AProposalLastsUntilTheFirstClickAndDoesNotComeBack)
{
    CropBoxes boxes;
    boxes.propose(upright);
    click(boxes, at(-0.5, 0.5));
    EXPECT_EQ(boxes.proposal(), upright) << "a click beside the image is none";
    EXPECT_TRUE(boxes.isEmpty());
    click(boxes, at(0.5, 0.5));
    EXPECT_FALSE(boxes.proposal());
    boxes.removeLast();
    boxes.propose(upright);
    EXPECT_FALSE(boxes.acceptProposal());

    CropBoxes taken;
    taken.propose(upright);
    EXPECT_TRUE(taken.acceptProposal());
    EXPECT_THAT(taken.boxes(), ElementsAre(upright));
    EXPECT_FALSE(taken.proposal());
}

TEST(CropBoxes, KeysGoFromCornerToCornerAndLeaveAtTheEnds)
{
    using enum CropBoxes::Direction;
    CropBoxes boxes = withBox();
    EXPECT_FALSE(boxes.nudge({1, 0}, rect));
    boxes.addBox(rect, rect);
    EXPECT_EQ(boxes.currentCorner(), (BoxCorner{1, 0}));
    EXPECT_TRUE(boxes.cycle(backward));
    EXPECT_EQ(boxes.currentCorner(), (BoxCorner{0, 3}));
    EXPECT_TRUE(boxes.nudge({10, -1}, rect));
    EXPECT_NEAR(boxes.boxes()[0].corners[3].x(), 0.21, 1e-12);
    EXPECT_NEAR(boxes.boxes()[0].corners[3].y(), 0.898, 1e-12);
    EXPECT_TRUE(boxes.nudge({-5000, 5000}, rect));
    EXPECT_EQ(boxes.boxes()[0].corners[3], QPointF(0, 1));
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(boxes.cycle(forward));
    EXPECT_EQ(boxes.currentCorner(), (BoxCorner{1, 3}));
    EXPECT_FALSE(boxes.cycle(forward));
    EXPECT_FALSE(boxes.currentCorner());
    EXPECT_TRUE(boxes.cycle(backward));
    EXPECT_EQ(boxes.currentCorner(), (BoxCorner{1, 3}));
    EXPECT_EQ(EditorWords::cornerName(*boxes.currentCorner()), u"Box 2, bottom left corner");
}

} // namespace
} // namespace velmor
