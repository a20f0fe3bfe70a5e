#include "browser/DrawerPlacement.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

TEST(DrawerPlacement, TheDrawerIsBesideTheWindowAndOnTheScreen)
{
    constexpr QSize drawer(900, 580);
    const struct {
        const char *what;
        QRect parent, screen;
        QPoint drawer, parentAfter;
    } cases[] = {
        {"to the right",                 {500, 100, 380, 420},  {0, 0, 2000, 1000},  {890, 100}, {500, 100} },
        {"to the right, just",           {500, 100, 380, 420},  {0, 0, 1790, 1000},  {890, 100}, {500, 100} },
        {"to the left",                  {1000, 100, 380, 420}, {0, 0, 1900, 1000},  {90, 100},  {1000, 100}},
        {"to the left, just",            {910, 100, 380, 420},  {0, 0, 1900, 1000},  {0, 100},   {910, 100} },
        {"the window steps aside",       {493, 100, 380, 420},  {0, 0, 1366, 768},   {466, 100}, {76, 100}  },
        {"a screen as wide as both",     {400, 100, 380, 420},  {0, 0, 1290, 768},   {390, 100}, {0, 100}   },
        {"a screen too narrow for both",
         {400, 100, 380, 420},
         {0, 0, 1280, 800},
         {380, 100},
         {400, 100}                                                                                         },
        {"a screen narrower than it",    {200, 100, 380, 420},  {0, 0, 800, 600},    {0, 20},    {200, 100} },
        {"not below the screen",         {500, 600, 380, 420},  {0, 0, 2000, 1000},  {890, 420}, {500, 600} },
        {"not above the screen",         {500, -50, 380, 420},  {0, 30, 2000, 1000}, {890, 30},  {500, -50} },
        {"a screen to the right",
         {2500, 100, 380, 420},
         {1920, 0, 1920, 900},
         {2890, 100},
         {2500, 100}                                                                                        },
        {"a screen of unknown place",    {0, 0, 380, 420},      {},                  {390, 0},   {0, 0}     },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(placeDrawer(drawer, c.parent, c.screen),
                  (DrawerPlacement{c.drawer, c.parentAfter}));
    }
}

} // namespace
} // namespace velmor
