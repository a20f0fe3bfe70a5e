#include "browser/DrawerPlacement.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

TEST(DrawerPlacement, TheDrawerIsBesideTheWindowAndOnTheScreen)
{
    constexpr DrawerSizes sizes{
        {900, 580},
        {480, 320}
    };
    constexpr QSize parentSize(380, 420);
    const struct {
        const char *what;
        QPoint parent;
        QRect screen, drawer;
        QPoint parentAfter;
    } cases[] = {
        {"to the right",             {500, 100},  {0, 0, 2000, 1000},  {890, 100, 900, 580}, {500, 100} },
        {"to the right, just",       {500, 100},  {0, 0, 1790, 1000},  {890, 100, 900, 580}, {500, 100} },
        {"to the left",              {1000, 100}, {0, 0, 1900, 1000},  {90, 100, 900, 580},  {1000, 100}},
        {"to the left, just",        {910, 100},  {0, 0, 1900, 1000},  {0, 100, 900, 580},   {910, 100} },
        {"the window steps aside",   {493, 100},  {0, 0, 1366, 768},   {466, 100, 900, 580}, {76, 100}  },
        {"as wide as both",          {400, 100},  {0, 0, 1290, 768},   {390, 100, 900, 580}, {0, 100}   },
        {"too narrow for both",      {400, 100},  {0, 0, 1280, 800},   {390, 100, 890, 580}, {0, 100}   },
        {"as wide as the least",     {322, 100},  {48, 48, 870, 604},  {438, 72, 480, 580},  {48, 100}  },
        {"too narrow for the least", {300, 100},  {0, 0, 869, 800},    {0, 100, 869, 580},   {300, 100} },
        {"too low",                  {200, 100},  {48, 48, 704, 504},  {48, 48, 704, 504},   {200, 100} },
        {"smaller than the least",   {0, 0},      {0, 0, 400, 300},    {0, 0, 480, 320},     {0, 0}     },
        {"not below the screen",     {500, 600},  {0, 0, 2000, 1000},  {890, 420, 900, 580}, {500, 600} },
        {"not above the screen",     {500, -50},  {0, 30, 2000, 1000}, {890, 30, 900, 580},  {500, -50} },
        {"on the second screen",
         {2500, 100},
         {1920, 0, 1920, 900},
         {2890, 100, 900, 580},
         {2500, 100}                                                                                    },
        {"of unknown place",         {0, 0},      {},                  {390, 0, 900, 580},   {0, 0}     },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(placeDrawer(sizes, QRect(c.parent, parentSize), c.screen),
                  (DrawerPlacement{c.drawer, c.parentAfter}));
    }
}

TEST(DrawerPlacement, BesideTheMiddleOfAScreenItIsWholeIfItCanBe)
{
    const DrawerSizes sizes{
        {900, 580},
        {620, 440}
    };
    EXPECT_EQ(drawerSizeBesideCentre(sizes, 380, 2560), QSize(900, 580));
    EXPECT_EQ(drawerSizeBesideCentre(sizes, 380, 1920), QSize(760, 580));
    EXPECT_EQ(drawerSizeBesideCentre(sizes, 380, 1366), QSize(620, 580));
}

} // namespace
} // namespace velmor
