// What the desktop does for the application, by services that stand in for it.

#include "tests/PrivateBus.h"
#include "tests/shell/VelmorWindowFixture.h"

#include <QDBusArgument>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QUrl>

namespace velmor {
namespace {

/// A global menu bar: learns where the menus of windows are.
class FakeRegistrar : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.AppMenu.Registrar")

public:
    QString owner;
    QString menu;

public Q_SLOTS:
    void RegisterWindow(uint, const QDBusObjectPath &path)
    {
        owner = message().service();
        menu = path.path();
    }
    void UnregisterWindow(uint) {}
};

/// A portal's dialog, in which a folder is chosen.
class FakeChooser : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")
    Q_PROPERTY(uint version READ version)

public:
    [[nodiscard]] static uint version() { return 3; }

    QString asker;
    QVariantMap asked;
    const QString request = QStringLiteral("/org/freedesktop/portal/desktop/request/1");

public Q_SLOTS:
    QDBusObjectPath OpenFile(const QString &, const QString &, const QVariantMap &options)
    {
        asker = message().service();
        asked = options;
        return QDBusObjectPath(request);
    }
};

class DesktopServicesTest : public VelmorWindowTest {
protected:
    DesktopServicesTest()
    {
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                           QString::fromUtf8(bus.address()));
    }

    PrivateBus bus;
};

TEST_F(DesktopServicesTest, AGlobalMenuBarShowsTheApplicationsMenu)
{
    FakeRegistrar registrar;
    ASSERT_TRUE(bus.offer("com.canonical.AppMenu.Registrar", "/com/canonical/AppMenu/Registrar",
                          registrar));
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner());
    ASSERT_TRUE(waitUntil([&] { return !registrar.menu.isEmpty(); }));
    const auto call = [&](const char *method, const QVariantList &arguments) {
        auto message = QDBusMessage::createMethodCall(registrar.owner, registrar.menu,
                                                      QStringLiteral("com.canonical.dbusmenu"),
                                                      QString::fromUtf8(method));
        message.setArguments(arguments);
        return bus.connection().call(message);
    };
    QMap<QString, int> entries;
    for (int id = 1; id <= 6; ++id) {
        const QDBusMessage answer =
            call("GetGroupProperties", {QVariant::fromValue(QList<int>{id}), QStringList()});
        ASSERT_FALSE(answer.arguments().isEmpty()) << answer.errorMessage().toStdString();
        const auto items = answer.arguments().constFirst().value<QDBusArgument>();
        items.beginArray();
        while (!items.atEnd()) {
            int number = 0;
            QVariantMap properties;
            items.beginStructure();
            items >> number >> properties;
            items.endStructure();
            entries.insert(properties.value(QStringLiteral("label")).toString(), number);
        }
        items.endArray();
    }
    EXPECT_THAT(entries.keys(), testing::IsSupersetOf({QStringLiteral("About VELMOR"),
                                                       QStringLiteral("Check for Updates…"),
                                                       QStringLiteral("Quit")}));
    call("Event", {entries.value(QStringLiteral("Quit")), QStringLiteral("clicked"),
                   QVariant::fromValue(QDBusVariant(0)), 0U});
    expectCleanEnd();
}

TEST_F(DesktopServicesTest, TheFolderIsChosenInThePortalsDialog)
{
    const QDir data(folder.filePath(QStringLiteral("data")));
    for (const char *description : {"dbus-1/services/org.freedesktop.portal.Desktop.service",
                                    "xdg-desktop-portal/portals/desk.portal"}) {
        const QString path = data.filePath(QString::fromUtf8(description));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("Interfaces=org.freedesktop.impl.portal.FileChooser\n");
    }
    environment.insert(QStringLiteral("XDG_DATA_DIRS"), data.path());
    FakeChooser chooser;
    ASSERT_TRUE(
        bus.offer("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", chooser));
    ASSERT_NO_FATAL_FAILURE(startAndWaitForScanner({QStringLiteral("-uiDrawer")}));
    // The last but one of the controls that can be used, from the first.
    screen.press(QStringLiteral("shift+Tab"));
    screen.press(QStringLiteral("shift+Tab"));
    screen.press(QStringLiteral("space"));
    ASSERT_TRUE(waitUntil([&] { return !chooser.asked.isEmpty(); }));
    EXPECT_EQ(chooser.asked.value(QStringLiteral("directory")), true);
    EXPECT_EQ(chooser.asked.value(QStringLiteral("accept_label")), QStringLiteral("Choose"));

    const QString chosen = folder.filePath(QStringLiteral("chosen"));
    QDir().mkpath(chosen);
    auto response = QDBusMessage::createTargetedSignal(
        chooser.asker, chooser.request, QStringLiteral("org.freedesktop.portal.Request"),
        QStringLiteral("Response"));
    response << 0U
             << QVariantMap{
                    {QStringLiteral("uris"), QStringList{QUrl::fromLocalFile(chosen).toString()}}
    };
    QFile settings(folder.filePath(QStringLiteral("Velmor/Velmor.ini")));
    EXPECT_TRUE(waitUntil([&] {
        // It is heard only once the answer to the question was.
        bus.connection().send(response);
        return settings.open(QIODevice::ReadOnly) && [&] {
            const bool kept = settings.readAll().contains(chosen.toUtf8());
            settings.close();
            return kept;
        }();
    }));
}

} // namespace
} // namespace velmor

#include "DesktopServicesTest.moc"
