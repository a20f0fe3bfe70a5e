#include "tests/editor_ui/EditorWindow.h"

namespace velmor {
namespace {

constexpr QColor accent(0x7A, 0x5A, 0xF8);

MATCHER_P(IsNearly, color, "")
{
    return std::abs(arg.red() - color.red()) <= 1 && std::abs(arg.green() - color.green()) <= 1 &&
           std::abs(arg.blue() - color.blue()) <= 1;
}

/// What is drawn, in pixels of the window. Runs at several scales.
class EditorPictures : public EditorWindow {
protected:
    void look() { m_picture = window->grabWindow(); }
    double ratio() const { return window->effectiveDevicePixelRatio(); }

    QColor colorAt(QPointF place) const
    {
        return m_picture.pixelColor((place * ratio() - QPointF(0.5, 0.5)).toPoint());
    }

    /// What all red pixels lie in.
    QRect redPixels() const
    {
        QRect found;
        for (int y = 0; y < m_picture.height(); ++y) {
            for (int x = 0; x < m_picture.width(); ++x) {
                if (m_picture.pixel(x, y) == qRgb(255, 0, 0))
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }

    /// The area around a place, in points, has colours that are nearly this.
    bool isAround(QPointF place, double radius, QColor color) const
    {
        const QRect around = QRectF((place - QPointF(radius, radius)) * ratio(),
                                    QSizeF(2 * radius, 2 * radius) * ratio())
                                 .toRect();
        for (int y = around.top(); y <= around.bottom(); ++y) {
            for (int x = around.left(); x <= around.right(); ++x) {
                const QColor at = m_picture.pixelColor(x, y);
                if (std::abs(at.red() - color.red()) + std::abs(at.green() - color.green()) +
                        std::abs(at.blue() - color.blue()) <
                    30)
                    return true;
            }
        }
        return false;
    }

    QImage m_picture;
};

TEST_F(EditorPictures, TheRedSquareIsAroundThePixelThatAClickMeasures)
{
    open(EditorMode::magic);
    const QPointF places[] = {
        {0.5,   0.5  },
        {0.377, 0.613},
        {0.026, 0.5  },
        {0.974, 0.4  },
        {0.41,  0.982}
    };
    for (const QPointF &place : places) {
        SCOPED_TRACE(testing::Message() << place.x() << ' ' << place.y());
        const QPoint at = onPage(place.x(), place.y());
        QTest::mouseMove(window.get(), at);
        look();
        const QRect square = redPixels();
        const double side = (6 + 1.5) * ratio();
        EXPECT_NEAR(square.width(), side, 1.6);
        EXPECT_NEAR(square.height(), side, 1.6);
        const QPointF n = norm(area->mapFromScene(at), editor->imageRect());
        const QPoint measured = samplePixel(n, 200, 250);
        EXPECT_EQ(m_picture.pixelColor(square.center()), editor->baseImage().pixelColor(measured));
        // And no part of its neighbours is within.
        const int inside = qFloor((6 - 1.5) * ratio() / 2) - 1;
        for (const QPoint corner : {QPoint(-inside, -inside), QPoint(inside, inside)}) {
            EXPECT_EQ(m_picture.pixelColor(square.center() + corner),
                      editor->baseImage().pixelColor(measured));
        }
    }
    // The lens is full to its rim.
    const QPoint at = onPage(0.5, 0.5);
    QTest::mouseMove(window.get(), at);
    look();
    const QPoint measured =
        samplePixel(norm(area->mapFromScene(at), editor->imageRect()), 200, 250);
    for (const QPoint way : {QPoint(10, 0), QPoint(-10, 0), QPoint(0, 10), QPoint(0, -10)}) {
        EXPECT_EQ(m_picture.pixelColor(redPixels().center() + way * 6 * ratio()),
                  editor->baseImage().pixelColor(measured + way));
    }
    QTest::mouseMove(window.get(), {5, 5});
    look();
    EXPECT_TRUE(redPixels().isEmpty());
}

TEST_F(EditorPictures, TheBlocksOfTheLensAreSharp)
{
    QImage board(200, 250, QImage::Format_RGB32);
    for (int y = 0; y < board.height(); ++y) {
        for (int x = 0; x < board.width(); ++x)
            board.setPixel(x, y, (x + y) % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    }
    open(EditorMode::magic, {board});
    for (const double x : {0.5, 0.503, 0.506, 0.51}) {
        QTest::mouseMove(window.get(), onPage(x, 0.6));
        look();
        // Along the blocks beside the marked one, on both axes: no pixel lies on two of them.
        const QPoint middle = redPixels().center();
        const int beside = qRound(12 * ratio());
        const int end = qRound(40 * ratio());
        for (int way = -end; way <= end; ++way) {
            for (const QPoint place : {QPoint(way, beside), QPoint(beside, way)}) {
                const QRgb pixel = m_picture.pixel(middle + place) & 0xFFFFFF;
                EXPECT_TRUE(pixel == 0 || pixel == 0xFFFFFF) << x << ' ' << way << ' ' << pixel;
            }
        }
    }
}

TEST_F(EditorPictures, TheThinnestPageIsStillSeen)
{
    QImage thin(1800, 1, QImage::Format_RGB32);
    thin.fill(qRgb(0, 0, 0));
    open(EditorMode::crop, {thin});
    look();
    EXPECT_TRUE(isAround(onPage(0.5, 0.5), 3, Qt::black));
}

TEST_F(EditorPictures, OnlyTheKeyboardShowsWhichCornerItMoves)
{
    QImage white(200, 250, QImage::Format_RGB32);
    white.fill(Qt::white);
    open(EditorMode::crop, {white});
    const auto hasRing = [this] {
        look();
        const QPointF corner =
            area->mapToScene(denorm(editor->boxes()[0].corners[0], editor->imageRect()));
        return colorAt(corner + QPointF(0, -10)) != QColor(Qt::white);
    };
    clickBox();
    drag(onPage(0.2, 0.2), onPage(0.25, 0.25));
    EXPECT_FALSE(hasRing());
    press(Qt::Key_Right);
    EXPECT_TRUE(hasRing());
    drag(onPage(0.25, 0.25), onPage(0.3, 0.3));
    EXPECT_FALSE(hasRing());
}

TEST_F(EditorPictures, ThePageStandsOnItsGroundAndShowsTheLevelsAtOnce)
{
    QImage grey(200, 250, QImage::Format_RGB32);
    grey.fill(qRgb(128, 128, 128));
    open(EditorMode::magic, {grey});
    look();
    EXPECT_EQ(colorAt(onPage(-0.1, 0.5)), QColor(0xF1, 0xEF, 0xF7));
    EXPECT_EQ(colorAt(onPage(0.5, 0.5)), QColor(128, 128, 128));
    const QPointF left = area->mapToScene(editor->imageRect().topLeft());
    EXPECT_EQ(colorAt(left + QPointF(1.5, 50)), QColor(128, 128, 128));
    EXPECT_EQ(colorAt(left + QPointF(-1.5, 50)), QColor(0xF1, 0xEF, 0xF7));
    editor->setWhiteLum(0.5);
    look();
    EXPECT_EQ(colorAt(onPage(0.5, 0.5)), QColor(Qt::white));
}

TEST_F(EditorPictures, ThePageIsRoundWhereTheSheetBelowItIs)
{
    QImage grey(1200, 1500, QImage::Format_RGB32);
    grey.fill(qRgb(128, 128, 128));
    open(EditorMode::crop, {grey});
    item("view")->setProperty("cornerRadius", 10);
    editor->applyZoom(8, QPointF(10, 10));
    look();
    const QPointF end = area->mapToScene({area->width(), area->height()});
    EXPECT_EQ(colorAt(end - QPointF(1, 1)), QColor(Qt::white));
    // Inside the round corner, and on both sides of where the parts meet.
    for (const QPointF way : {
             QPointF(5, 5), {9.5,  3   },
               {10.5, 3   },
               {3,    9.5 },
               {3,    10.5},
               {40,   40  }
    })
        EXPECT_THAT(colorAt(end - way), IsNearly(QColor(128, 128, 128))) << way.x();
    // Smaller and smaller pictures, with the corner and without it.
    while (editor->isZoomedIn()) {
        editor->zoomOut();
        look();
    }
    EXPECT_EQ(colorAt(end - QPointF(5, 5)), QColor(0xF1, 0xEF, 0xF7));
}

TEST_F(EditorPictures, BoxesAndKnobsAreDrawnAsTheyAre)
{
    QImage white(200, 250, QImage::Format_RGB32);
    white.fill(Qt::white);
    open(EditorMode::crop, {white});
    clickBox();
    look();
    const auto corner = [this](size_t index) {
        return area->mapToScene(denorm(editor->boxes()[0].corners.at(index), editor->imageRect()));
    };
    const QPointF first = corner(0);
    EXPECT_THAT(colorAt((first + corner(1)) / 2), IsNearly(accent));
    EXPECT_EQ(colorAt(first), QColor(Qt::white));
    EXPECT_THAT(colorAt(first + QPointF(0, -5)), IsNearly(accent));
    EXPECT_EQ(colorAt(first + QPointF(0, -8)), QColor(Qt::white));
    EXPECT_THAT(colorAt(onPage(0.5, 0.5)), IsNearly(QColor(0xF4, 0xF2, 0xFE)));
    // The one in hand is larger.
    QTest::mousePress(window.get(), Qt::LeftButton, {}, first.toPoint());
    look();
    EXPECT_EQ(colorAt(corner(0) + QPointF(0, -5)), QColor(Qt::white));
    EXPECT_THAT(colorAt(corner(0) + QPointF(0, -7)), IsNearly(accent));

    open(EditorMode::magic, {white});
    look();
    EXPECT_EQ(colorAt(middleOf(item("blackKnob"))), QColor(Qt::black));
    EXPECT_EQ(colorAt(middleOf(item("whiteKnob"))), QColor(Qt::white));
}

} // namespace
} // namespace velmor
