#include "controls/InterfaceFont.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace velmor;

namespace {

TEST(InterfaceFont, IsTheDesktopsOrElseInter)
{
    ASSERT_TRUE(QFontDatabase::hasFamily(QStringLiteral("Inter"))) << "run script/bootstrap";
    QStringList others = QFontDatabase::families();
    others.removeIf([](const QString &family) { return family.startsWith(u"Inter"); });
    ASSERT_FALSE(others.isEmpty());
    const QString named = others.first();
    const QString inter = QStringLiteral("Inter");
    const struct {
        const char *what, *desktop; ///< Null without one.
        QString system, expected;
    } cases[] = {
        {"the desktop's",     "GNOME", named,                                  named},
        {"no desktop",        nullptr, named,                                  inter},
        {"a stand-in",        "GNOME", QStringLiteral("Sans Serif"),           inter},
        {"the toolkit's own", "GNOME", QStringLiteral("helvetica"),            inter},
        {"one not installed", "KDE",   QStringLiteral("Font That Isn't Here"), inter},
        {"nothing at all",    "KDE",   QString(),                              inter},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        if (c.desktop)
            qputenv("XDG_CURRENT_DESKTOP", c.desktop);
        else
            qunsetenv("XDG_CURRENT_DESKTOP");
        QFont system;
        system.setFamily(c.system);
        system.setPointSizeF(11.5);
        EXPECT_EQ(interfaceFont(system).family(), c.expected);
        EXPECT_EQ(interfaceFont(system).pointSizeF(), 11.5) << "the size is the desktop's anyway";
    }
}

} // namespace
