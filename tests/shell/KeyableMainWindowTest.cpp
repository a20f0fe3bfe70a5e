#include "shell/KeyableMainWindow.h"

#include <QScreen>
#include <gmock/gmock.h>

namespace velmor {
namespace {

TEST(KeyableMainWindow, StartsNearTheTopInTheMiddleOfTheScreen)
{
    const struct {
        QRect visibleFrame;
        QPoint expected;
    } cases[] = {
        {{0, 0, 1920, 1080},  {770, 100} },
        {{60, 30, 1306, 738}, {523, 130} },
        {{1920, 0, 801, 600}, {2130, 100}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(KeyableMainWindow::startPosition(c.visibleFrame), c.expected);
}

TEST(KeyableMainWindow, TheNominalWidthDecidesWhereItStarts)
{
    KeyableMainWindow window;
    window.setCardSize({500, 300});
    window.placeAtStart();
    EXPECT_EQ(window.cardGeometry(),
              QRect(KeyableMainWindow::startPosition(window.screen()->availableGeometry()),
                    QSize(500, 300)));
}

} // namespace
} // namespace velmor
