#include "controls/DesktopMotion.h"

#include "tests/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace velmor;

namespace {

TEST(DesktopMotion, ReadsTheWishFromSettingsFiles)
{
    struct Case {
        const char *what;
        const char *file;
        const char *text;
        std::optional<bool> reduced;
    };
    const Case cases[] = {
        {"no file",              "other",                "",                                          {}   },
        {"nothing said",         "gtk-4.0/settings.ini", "[Settings]\ngtk-font-name=Inter 11\n",      {}   },
        {"GTK 4, off by number", "gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=0\n",
         true                                                                                              },
        {"GTK 3, off by word",   "gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=false\n",
         true                                                                                              },
        {"GTK 3, on",            "gtk-3.0/settings.ini", "[Settings]\ngtk-enable-animations=true\n",  false},
        {"Plasma, instantly",    "kdeglobals",           "[KDE]\nAnimationDurationFactor=0\n",        true },
        {"Plasma, slower",       "kdeglobals",           "[KDE]\nAnimationDurationFactor=1.5\n",      false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        QTemporaryDir folder;
        const QDir config(folder.path());
        const QString path = config.filePath(QLatin1String(c.file));
        ASSERT_TRUE(config.mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(c.text);
        file.close();
        EXPECT_EQ(reducedMotionInFiles(config), c.reduced);
    }
}

/// The settings service of a desktop.
class FakeSettings : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    QMap<QString, QVariantMap> settings;

public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList &) { return settings; }
};

TEST(DesktopMotion, AsksTheSettingsServiceAndHearsOfChanges)
{
    const QString appearance = QStringLiteral("org.freedesktop.appearance");
    const QString gnome = QStringLiteral("org.gnome.desktop.interface");
    const QString reduced = QStringLiteral("reduced-motion");
    const QString animations = QStringLiteral("enable-animations");
    const struct {
        const char *what;
        QMap<QString, QVariantMap> settings;
        bool reduced;
        QString changedSpace, changedKey;
        QVariant value;
        bool afterwards;
    } cases[] = {
        {"all desktops' setting",
         {{appearance, {{reduced, 1U}}}},
         true,                                                                   appearance,
         reduced,                                                                                        0U,
         false                                                                                                      },
        {"GNOME's own",           {{gnome, {{animations, true}}}},        false, gnome,      animations, false, true},
        {"both, which differ",
         {{appearance, {{reduced, 0U}}}, {gnome, {{animations, false}}}},
         false,                                                                  appearance,
         reduced,                                                                                        1U,
         true                                                                                                       },
    };
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
    PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    FakeSettings fake;
    const char *path = "/org/freedesktop/portal/desktop";
    ASSERT_TRUE(bus.offer("org.freedesktop.portal.Desktop", path, fake));
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        fake.settings = c.settings;
        const DesktopMotion motion;
        std::optional<bool> told;
        QObject::connect(&motion, &DesktopMotion::told, [&](bool wish) { told = wish; });
        EXPECT_TRUE(waitUntil([&] { return told.has_value(); }));
        EXPECT_EQ(told, c.reduced);
        auto change = QDBusMessage::createSignal(QString::fromUtf8(path),
                                                 QStringLiteral("org.freedesktop.portal.Settings"),
                                                 QStringLiteral("SettingChanged"));
        change << c.changedSpace << c.changedKey << QVariant::fromValue(QDBusVariant(c.value));
        bus.connection().send(change);
        EXPECT_TRUE(waitUntil([&] { return told == c.afterwards; }));
    }
}

} // namespace

#include "DesktopMotionTest.moc"
