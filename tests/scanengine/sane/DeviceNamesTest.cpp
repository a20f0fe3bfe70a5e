#include "scanengine/drivers/sane/DeviceNames.h"

#include "scanengine/drivers/sane/DeviceTitle.h"
#include "tests/Printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace scanengine {
namespace {

SaneDevice saneDevice(const char *name, const char *vendor, const char *model,
                      const char *type = "flatbed scanner")
{
    return {QString::fromUtf8(name), QString::fromUtf8(vendor), QString::fromUtf8(model),
            QString::fromUtf8(type)};
}

UsbDevice usb(int bus, int address, int vendorId, int productId, const char *serial,
              const char *port)
{
    return {bus, address, vendorId, productId, QString::fromUtf8(serial), QString::fromUtf8(port)};
}

/// The scanners as lines "id = name <- SANE's name".
QStringList listed(const QList<SaneDevice> &devices, const QList<UsbDevice> &usbDevices = {})
{
    QStringList lines;
    for (const SaneScanner &scanner : scannersAmong(devices, usbDevices)) {
        EXPECT_EQ(scanner.device.driver, QStringLiteral("sane"));
        lines.append(scanner.device.id + QStringLiteral(" = ") + scanner.device.name +
                     QStringLiteral(" <- ") + scanner.saneName);
    }
    return lines;
}

TEST(DeviceTitle, IsWhatAPersonCallsTheDevice)
{
    const struct {
        const char *vendor, *model, *expected;
    } cases[] = {
        {"Canon",           "LiDE 400",                           "Canon LiDE 400"            },
        {"CANON",           "Canon PIXMA MG5300",                 "Canon PIXMA MG5300"        },
        {"Hewlett-Packard", "hp LaserJet M1212nf",                "HP LaserJet M1212nf"       },
        {"Hewlett-Packard", "OfficeJet_J4500_series",             "HP OfficeJet J4500 series" },
        {"FUJITSU",         "fi-6130dj",                          "Fujitsu fi-6130dj"         },
        {"EPSON",           "EPSON Perfection V39",               "Epson Perfection V39"      },
        {"eSCL",            "Brother MFC-J4335DW [3c2af4a1b2c3]", "Brother MFC-J4335DW"       },
        {"eSCL",            "HP OfficeJet Pro 8010 (USB)",        "HP OfficeJet Pro 8010"     },
        {"Noname",          "frontend-tester",                    "frontend-tester"           },
        {"Xerox",           "WorkCentre 3225 (A3)",               "Xerox WorkCentre 3225 (A3)"},
        {"UMAX",            "UMAXIMAL 2",                         "UMAX UMAXIMAL 2"           },
        {"HP",              "",                                   "HP"                        },
        {"Noname",          "",                                   "plustek:x"                 },
    };
    for (const auto &c : cases)
        EXPECT_EQ(deviceTitle(saneDevice("plustek:x", c.vendor, c.model)),
                  QString::fromUtf8(c.expected));
}

const QList<UsbDevice> usbBus{
    usb(1, 5, 0x04a9, 0x1909, "", "1-2"),
    usb(1, 6, 0x04b8, 0x014a, "X2PK012345", "1-3"),
    usb(2, 4, 0x04a9, 0x1909, "", "2-1.4"),
    usb(3, 7, 0x04a9, 0x1912, "347F42", "3-1"),
};

TEST(DeviceNames, AnIdNamesTheDeviceNotItsPlaceOnTheBus)
{
    const struct {
        const char *what;
        SaneDevice device;
        const char *id;
    } cases[] = {
        {"USB", saneDevice("genesys:libusb:001:005", "Canon", "LiDE 210"), "usb:04a9:1909"},
        {"USB with a serial number", saneDevice("epson2:libusb:001:006", "Epson", "V39"),
         "usb:04b8:014a:X2PK012345"},
        {"USB, the same by another backend",
         saneDevice("epkowa:interpreter:usb:001:006", "Epson", "V39"), "usb:04b8:014a:X2PK012345"},
        {"USB by bus and device", saneDevice("brother4:bus1;dev6", "Brother", "DCP-7055"),
         "usb:04b8:014a:X2PK012345"},
        {"USB, named by its numbers", saneDevice("pixma:04A91912_347F42", "CANON", "LiDE 400"),
         "usb:04a9:1912:347F42"},
        {"USB, unknown to the system", saneDevice("genesys:libusb:009:009", "Canon", "LiDE 210"),
         "genesys:Canon LiDE 210"},
        {"model and serial in the name",
         saneDevice("fujitsu:fi-6130dj:12345", "FUJITSU", "fi-6130dj"), "fujitsu:fi-6130dj:12345"},
        {"serial as a parameter",
         saneDevice("hpaio:/usb/OfficeJet_J4500?serial=CN8A1B2C", "HP", "J4500"),
         "hpaio:HP J4500:CN8A1B2C"},
        {"network, eSCL",
         saneDevice("airscan:e7:Canon TS3300 series", "eSCL", "Canon TS3300 series", "ip=10.0.0.7"),
         "network:Canon TS3300 series"},
        {"network, WSD",
         saneDevice("airscan:w0:Canon TS3300 series", "WSD", "Canon TS3300 series", "ip=10.0.0.7"),
         "network:Canon TS3300 series"},
        {"network, by its address", saneDevice("epson2:net:192.168.1.5", "Epson", "WF-7720"),
         "epson2:Epson WF-7720"},
        {"a saned", saneDevice("net:attic:genesys:libusb:001:005", "Canon", "LiDE 210"),
         "server:attic:genesys:Canon LiDE 210"},
        {"a saned by IPv6", saneDevice("net:[fe80::1]:test:0", "Noname", "frontend-tester"),
         "server:fe80::1:test:0"},
        {"nothing known", saneDevice("mustek:/dev/sg2", "Mustek", "Paragon"), "mustek:/dev/sg2"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const auto scanners = scannersAmong({c.device}, usbBus);
        ASSERT_EQ(scanners.size(), 1);
        EXPECT_EQ(scanners[0].device.id, QString::fromUtf8(c.id));
        EXPECT_EQ(scanners[0].saneName, c.device.name);
    }
}

TEST(DeviceNames, TwinsAreToldApart)
{
    const struct {
        const char *what;
        QList<SaneDevice> devices;
        QStringList expected;
    } cases[] = {
        {"by their ports",
         {saneDevice("genesys:libusb:002:004", "Canon", "LiDE 210"),
          saneDevice("genesys:libusb:001:005", "Canon", "LiDE 210")},
         {QStringLiteral("usb:04a9:1909@1-2 = Canon LiDE 210 (port 1-2) <- genesys:libusb:001:005"),
          QStringLiteral(
              "usb:04a9:1909@2-1.4 = Canon LiDE 210 (port 2-1.4) <- genesys:libusb:002:004")}   },
        {"by their addresses",
         {saneDevice("airscan:e0:HP 8010", "eSCL", "HP 8010", "ip=10.0.0.8"),
          saneDevice("airscan:e1:HP 8010", "eSCL", "HP 8010", "ip=10.0.0.9")},
         {QStringLiteral("network:HP 8010@10.0.0.8 = HP 8010 (10.0.0.8) <- airscan:e0:HP 8010"),
          QStringLiteral("network:HP 8010@10.0.0.9 = HP 8010 (10.0.0.9) <- airscan:e1:HP 8010")}},
        {"USB and network",
         {saneDevice("epson2:libusb:001:006", "Epson", "V39"),
          saneDevice("epson2:net:10.0.0.5", "Epson", "V39")},
         {QStringLiteral("epson2:Epson V39 = Epson V39 (10.0.0.5) <- epson2:net:10.0.0.5"),
          QStringLiteral("usb:04b8:014a:X2PK012345 = Epson V39 (USB) <- epson2:libusb:001:006")}},
        {"by number where nothing else differs",
         {saneDevice("test:0", "Noname", "frontend-tester"),
          saneDevice("test:1", "Noname", "frontend-tester")},
         {QStringLiteral("test:0 = frontend-tester (1) <- test:0"),
          QStringLiteral("test:1 = frontend-tester (2) <- test:1")}                             },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(listed(c.devices, usbBus), c.expected);
    }
}

TEST(DeviceNames, OneDeviceIsListedOnceByItsBestWay)
{
    const SaneDevice escl =
        saneDevice("airscan:e0:Canon TS3300 series", "eSCL", "Canon TS3300 series", "ip=10.0.0.7");
    const SaneDevice ownEscl =
        saneDevice("airscan:e1:Canon TS3300 (USB)", "eSCL", "Canon TS3300 (USB)", "ip=127.0.0.1");
    const SaneDevice onUsb = saneDevice("epson2:libusb:001:006", "Epson", "V39");
    const struct {
        const char *what;
        QList<SaneDevice> devices;
        QStringList kept;
    } cases[] = {
        {"eSCL before WSD",
         {saneDevice("airscan:w0:Canon TS3300 series", "WSD", "Canon TS3300", "ip=10.0.0.7"), escl},
         {escl.name}                                                                                             },
        {"airscan before the plain eSCL backend",
         {saneDevice("escl:https://10.0.0.7:443", "Canon", "TS3300 series"), escl},
         {escl.name}                                                                                             },
        {"eSCL before a backend with the same address",
         {saneDevice("pixma:TS3300_10.0.0.7", "CANON", "Canon PIXMA TS3300"), escl},
         {escl.name}                                                                                             },
        {"eSCL before a backend that hides the address",
         {saneDevice("brother4:net1;dev0", "Brother", "MFC-L2710DW"),
          saneDevice("airscan:e0:Brother MFC-L2710DW series", "eSCL", "Brother MFC-L2710DW series",
                     "ip=10.0.0.9")},
         {QStringLiteral("airscan:e0:Brother MFC-L2710DW series")}                                               },
        {"eSCL over USB before the backend",
         {saneDevice("pixma:04A91912_347F42", "CANON", "Canon PIXMA TS3300"), ownEscl},
         {ownEscl.name}                                                                                          },
        {"two backends on one USB device",
         {onUsb, saneDevice("epkowa:usb:001:006", "EPSON", "Perfection V39")},
         {onUsb.name}                                                                                            },
        {"our own USB before our own saned",
         {saneDevice("net:localhost:epson2:libusb:001:006", "Epson", "V39"), onUsb},
         {onUsb.name}                                                                                            },
        {"the same serial number",
         {saneDevice("hpaio:/usb/V39?serial=X2PK012345", "HP", "V39"), onUsb},
         {QStringLiteral("hpaio:/usb/V39?serial=X2PK012345")}                                                    },
        {"listed twice",                                 {onUsb, onUsb},                             {onUsb.name}},
        {"the same model elsewhere is another device",
         {saneDevice("net:attic:epson2:libusb:001:006", "Epson", "V39"), onUsb},
         {onUsb.name, QStringLiteral("net:attic:epson2:libusb:001:006")}                                         },
        {"the same address of ours is no evidence",
         {saneDevice("airscan:e0:Acme 1", "eSCL", "Acme 1", "ip=127.0.0.1"),
          saneDevice("escl:http://127.0.0.1:9", "Beta", "Beta 2")},
         {QStringLiteral("airscan:e0:Acme 1"), QStringLiteral("escl:http://127.0.0.1:9")}                        },
        {"no cameras",
         {saneDevice("v4l:/dev/video0", "Noname", "Integrated Camera", "virtual device"),
          saneDevice("gphoto2:Nikon", "Nikon", "D5", "still camera"),
          saneDevice("x:1", "Logitech", "C270", "video camera")},
         {}                                                                                                      },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        QStringList kept;
        for (const SaneScanner &scanner : scannersAmong(c.devices, usbBus))
            kept.append(scanner.saneName);
        EXPECT_THAT(kept, testing::UnorderedElementsAreArray(c.kept));
    }
}

TEST(DeviceNames, AnIdFindsItsScannerAlsoAfterATwinCameOrWent)
{
    const SaneDevice one = saneDevice("genesys:libusb:001:005", "Canon", "LiDE 210");
    const SaneDevice other = saneDevice("genesys:libusb:002:004", "Canon", "LiDE 210");
    const auto alone = scannersAmong({one}, usbBus);
    const auto both = scannersAmong({one, other}, usbBus);
    const QString plain = alone[0].device.id;
    const QString atPort = both[0].device.id;

    const auto nameOf = [](const SaneScanner *scanner) {
        return scanner ? scanner->saneName : QStringLiteral("none");
    };
    EXPECT_EQ(nameOf(findScanner(both, atPort)), both[0].saneName);
    EXPECT_EQ(nameOf(findScanner(alone, atPort)), one.name);
    EXPECT_EQ(nameOf(findScanner(alone, plain)), one.name);
    EXPECT_EQ(nameOf(findScanner(both, plain)), QStringLiteral("none")) << "which of both?";
    EXPECT_EQ(nameOf(findScanner(both, QStringLiteral("usb:04a9:19"))), QStringLiteral("none"));
    EXPECT_EQ(nameOf(findScanner({}, plain)), QStringLiteral("none"));
}

TEST(UsbDevices, AreReadFromTheSystemsFolder)
{
    QTemporaryDir system;
    const auto put = [&system](const char *port, const char *name, const QByteArray &content) {
        ASSERT_TRUE(QDir(system.path()).mkpath(QString::fromUtf8(port)));
        QFile file(system.filePath(QString::fromUtf8(port) + u'/' + QString::fromUtf8(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    put("1-2", "busnum", "1\n");
    put("1-2", "devnum", "12\n");
    put("1-2", "idVendor", "04a9\n");
    put("1-2", "idProduct", "190f\n");
    put("3-1.4", "busnum", "3\n");
    put("3-1.4", "devnum", "2\n");
    put("3-1.4", "serial", "A 1\n");
    put("1-2:1.0", "bInterfaceClass", "ff\n");
    const QList<UsbDevice> expected{usb(1, 12, 0x04a9, 0x190f, "", "1-2"),
                                    usb(3, 2, 0, 0, "A 1", "3-1.4")};
    EXPECT_EQ(readUsbDevices(system.path()), expected);
    EXPECT_TRUE(readUsbDevices(system.filePath(QStringLiteral("none"))).isEmpty());
}

} // namespace
} // namespace scanengine
