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
        {u"Page2",                  u"page3"                 },
        {u"18446744073709551615.x", u"18446744073709551616.x"},
        {u"0",                      u"00"                    },
        {u"A1",                     u"a1"                    },
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
