#include "scanengine/drivers/NaturalOrder.h"

#include <QByteArray>
#include <gtest/gtest.h>

namespace scanengine {
namespace {

TEST(NaturalOrder, NamesGoTheWayAPersonNumbersThem)
{
    const std::pair<const char16_t *, const char16_t *> cases[] = {
        {u"page2.png",              u"page10.png"            },
        {u"page 9",                 u"page 09a"              },
        {u"1.png",                  u"a.png"                 },
        {u"scan",                   u"scan1"                 },
        {u"a1b2",                   u"a1b10"                 },
        {u"Page2",                  u"page3"                 },
        {u"page2",                  u"Page3"                 },
        {u"18446744073709551615.x", u"18446744073709551616.x"},
        {u"0",                      u"00"                    },
        {u"A1",                     u"a1"                    },
        {u"007",                    u"8"                     },
    };
    for (const auto &[first, second] : cases) {
        SCOPED_TRACE(QStringView(first).toUtf8().toStdString());
        EXPECT_TRUE(naturallyBefore(QStringView(first), QStringView(second)));
        EXPECT_FALSE(naturallyBefore(QStringView(second), QStringView(first)));
        EXPECT_FALSE(naturallyBefore(QStringView(first), QStringView(first)));
    }
}

} // namespace
} // namespace scanengine
