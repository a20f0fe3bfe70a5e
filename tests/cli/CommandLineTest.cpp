#include "cli/CommandLine.h"

#include "tests/Printers.h"

#include <QDir>
#include <gmock/gmock.h>

namespace velmor {
namespace {

using testing::HasSubstr;

Request parsed(const char *arguments)
{
    return parseCommandLine(
        (QStringLiteral("velmor ") + QString::fromUtf8(arguments)).split(u' ', Qt::SkipEmptyParts),
        QStringLiteral("1.2"));
}

/// The settings that a scan with these options uses.
ScanSettings settingsFor(const char *options)
{
    const Request request = parsed(options);
    const auto *scan = std::get_if<ScanRequest>(&request);
    EXPECT_TRUE(scan) << options;
    if (!scan)
        return {};
    ScanSettings settings;
    applyDefaults(scan->tab, settings);
    return scan->appliedTo(settings);
}

TEST(CommandLine, TheTabSetsWhatTheOptionsLeaveOpen)
{
    ScanSettings document;
    applyDefaults(DocumentType::document, document);
    document.batch = false;
    EXPECT_EQ(settingsFor("scan"), document);

    ScanSettings photo;
    applyDefaults(DocumentType::photo, photo);
    EXPECT_EQ(settingsFor("scan --tab photo"), photo);

    ScanSettings all = photo;
    all.quality = ScanQuality::high;
    all.colorMode = ColorMode::bw;
    all.source = QStringLiteral("auto");
    all.batch = true;
    all.ocr = true;
    all.outputFolder = QUrl::fromLocalFile(QDir::currentPath() + QStringLiteral("/x"));
    EXPECT_EQ(settingsFor("scan --folder=x --tab photo --quality 600 --color bw --source auto "
                          "--batch --ocr"),
              all);
}

TEST(CommandLine, WithoutACommandItIsTheWindow)
{
    using Page = WindowRequest::Page;
    const struct {
        const char *arguments;
        std::optional<Page> page; ///< Absent if it isn't the window.
    } cases[] = {
        {"",                        Page::home                 },
        {"-uiDrawer",               Page::homeWithAdvancedPanel},
        {"-platform x -uiDrawer y", Page::homeWithAdvancedPanel},
        {"-uidrawer",               {}                         },
        {"-uiDrawer=1",             {}                         },
        {"--gallery",               Page::gallery              },
        {"devices --gallery",       {}                         },
        {"--version",               {}                         },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.arguments);
        const Request request = parsed(c.arguments);
        const auto *window = std::get_if<WindowRequest>(&request);
        EXPECT_EQ(window ? std::optional(window->page) : std::nullopt, c.page);
    }
}

TEST(CommandLine, WrongUseIsToldPrecisely)
{
    const struct {
        const char *arguments, *message;
    } cases[] = {
        {"fax",                     "“fax”"                       },
        {"scan --quality 200",      "150, 300, 600, not “200”"    },
        {"scan --color gray",       "auto, color, grayscale, bw"  },
        {"scan --tab Photo",        "document, photo, not “Photo”"},
        {"scan --search-timeout 0", "1 to 3600, not “0”"          },
        {"magic",                   "A file is missing"           },
        {"split",                   "A file is missing"           },
        {"rotate --folder x a.pdf", "folder"                      },
        {"magic --black 1.5 a.pdf", "0 to 1, not “1.5”"           },
        {"magic --gamma nan a.pdf", "0.1 to 10, not “nan”"        },
        {"devices --device x",      "device"                      },
        {"crop a.pdf",              "--quad is missing"           },
        {"crop --page 0 a.pdf",     "from 1, not “0”"             },
        {"crop --page 1.5 a.pdf",   "from 1, not “1.5”"           },
        {"crop --quad 0,0 a.pdf",   "four corners"                },
        {"crop a.pdf b.pdf",        "“b.pdf”"                     },
    };
    for (const auto &c : cases) {
        const Request request = parsed(c.arguments);
        const auto *wrong = std::get_if<WrongUse>(&request);
        ASSERT_TRUE(wrong) << c.arguments;
        EXPECT_THAT(wrong->message.toStdString(), HasSubstr(c.message));
    }
}

TEST(CommandLine, ARegionIsFourCornersInAnyOrder)
{
    const Quad wanted{
        {QPointF(0.1, 0.2), QPointF(0.9, 0.25), QPointF(0.85, 1), QPointF(0, 0.9)}
    };
    const struct {
        const char *corners;
        bool isRegion;
    } cases[] = {
        {"0.1,0.2 0.9,0.25 0.85,1 0,0.9",        true },
        {"  .85,1\t0,.9   .9,.25\n.1,.2 ",       true },
        {"0.1,0.2 0.9,0.25 0.85,1",              false},
        {"0.1,0.2 0.9,0.25 0.85,1 0,0.9 0.5,.5", false},
        {"0.1,0.2 0.9,0.25 0.85,1 0",            false},
        {"0.1,0.2 0.9,0.25 0.85,1 0,0.9,1",      false},
        {"0.1,0.2 0.9,0.25 0.85,1 0,x",          false},
        {"0.1,0.2 0.9,0.25 0.85,1 0,nan",        false},
        {"0.1,0.2 0.9,0.25 0.85,1.01 0,0.9",     false},
        {"0,0 0,0 0,0 0,0",                      false},
        {"",                                     false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.corners);
        const Request request = parseCommandLine(
            {QStringLiteral("velmor"), QStringLiteral("crop"), QStringLiteral("--page=2"),
             QStringLiteral("--quad"), QString::fromUtf8(c.corners), QStringLiteral("a.pdf")},
            QStringLiteral("1.2"));
        const auto *crop = std::get_if<CropRequest>(&request);
        ASSERT_EQ(crop != nullptr, c.isRegion);
        if (crop) {
            EXPECT_EQ(crop->page, 1);
            EXPECT_EQ(crop->boxes, QList<Quad>(1, wanted));
            EXPECT_TRUE(crop->ocr);
        }
    }
}

TEST(CommandLine, HelpAndVersionComeFirst)
{
    for (const char *arguments : {"--help", "-h", "help", "scan --help --quality 7", "devices -h"})
        EXPECT_THAT(std::get<PrintRequest>(parsed(arguments)).text.toStdString(),
                    HasSubstr("Usage:"));
    EXPECT_EQ(std::get<PrintRequest>(parsed("--version")).text, QStringLiteral("velmor 1.2\n"));
}

} // namespace
} // namespace velmor
