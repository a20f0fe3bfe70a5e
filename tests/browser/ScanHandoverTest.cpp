#include "browser/ScanHandover.h"

#include "tests/PrivateBus.h"
#include "tests/pipeline/TestPages.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

/// A file manager that notes what it is asked to show.
class FileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &) { shown = uris; }

public:
    QStringList shown;
};

TEST(ScanHandover, TheFileManagerIsAskedForAllMarkedScans)
{
    PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    FileManager manager;
    ASSERT_TRUE(
        bus.offer("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", manager));
    const QUrl one = QUrl::fromLocalFile(QStringLiteral("/scans/a b#ü.pdf"));
    const QUrl other = QUrl::fromLocalFile(QStringLiteral("/scans/c.pdf"));
    ScansBrowser browser;
    browser.toggle(one, Qt::NoModifier);
    browser.toggle(other, Qt::ControlModifier);
    ScanHandover handover;
    handover.setProperty("browser", QVariant::fromValue(&browser));
    handover.showInFolder(other);
    EXPECT_TRUE(waitUntil([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList({QStringLiteral("file:///scans/a%20b%23%C3%BC.pdf"),
                                          QStringLiteral("file:///scans/c.pdf")}));
    EXPECT_FALSE(browser.note());
}

TEST(ScanHandover, FilesAreOfferedInTheFormsThatFileManagersTake)
{
    const auto data = filesToCopy({QUrl::fromLocalFile(QStringLiteral("/a b.pdf")),
                                   QUrl::fromLocalFile(QStringLiteral("/c.pdf"))});
    EXPECT_EQ(data->data(QStringLiteral("text/uri-list")),
              "file:///a%20b.pdf\r\nfile:///c.pdf\r\n");
    EXPECT_EQ(data->data(QStringLiteral("x-special/gnome-copied-files")),
              "copy\nfile:///a%20b.pdf\nfile:///c.pdf");
}

TEST(ScanHandover, AFileThatIsGoneIsToldWhenItIsOpened)
{
    ScansBrowser browser;
    ScanHandover handover;
    handover.setProperty("browser", QVariant::fromValue(&browser));
    handover.open(QUrl::fromLocalFile(QStringLiteral("/nowhere/a.pdf")));
    EXPECT_EQ(browser.note(), QStringLiteral("Couldn't open a.pdf"));
}

} // namespace
} // namespace velmor

#include "ScanHandoverTest.moc"
