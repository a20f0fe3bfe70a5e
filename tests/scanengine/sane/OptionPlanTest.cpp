#include "scanengine/drivers/sane/OptionPlan.h"

#include "OptionDump.h"
#include "tests/Printers.h"

#include <gmock/gmock.h>

#include <functional>

namespace scanengine {
namespace {

using Reaction = std::function<void(SaneOptions &)>;

SaneOption &optionOf(SaneOptions &options, QStringView name)
{
    for (SaneOption &option : options) {
        if (option.name == name)
            return option;
    }
    ADD_FAILURE() << "no option " << name.toUtf8().constData();
    return options.first();
}

/// Makes every setting that `plan` wants, as a device would that takes all of them, `reaction`
/// being what a setting changes besides. Answers them in short, parted by ", ".
std::string settle(OptionPlan &plan, SaneOptions &options, const Reaction &reaction = {})
{
    constexpr int endless = 100;
    QStringList settings;
    while (const auto setting = plan.nextSetting(options)) {
        settings.append(inShort(*setting));
        optionOf(options, setting->name).value = setting->value;
        if (reaction)
            reaction(options);
        if (settings.size() > endless) {
            ADD_FAILURE() << "the plan doesn't end";
            break;
        }
    }
    return settings.join(QStringLiteral(", ")).toStdString();
}

const CaptureWish color300{PaperSource::automatic, 300, ColorMode::automatic};
const CaptureWish gray150{PaperSource::automatic, 150, ColorMode::gray};
const CaptureWish flatbed300{PaperSource::flatbed, 300, ColorMode::color};

enum Kind { flatbed, feeder, duplexFeeder };

/// Devices as their backends describe them, and the settings that lead to a page.
struct DeviceCase {
    const char *backend;
    const char *dump;
    CaptureWish wish;
    const char *expected;
    Kind kind = flatbed;
    double dpi = 300;
};

const DeviceCase devices[] = {
    {"genesys, flatbed alone",
     R"(--mode Color|Gray|Lineart [Gray]
        --source Flatbed|Transparency Adapter [Flatbed]
        --preview[=(yes|no)] [no]
        --depth 16|8 [16]
        --resolution 4800|2400|1200|600|300|150|100|75dpi [75]
        -l 0..216.7mm [0]
        -t 0..297.5mm [0]
        -x 0..216.7mm [216.7]
        -y 0..297.5mm [297.5]
        --custom-gamma[=(yes|no)] [no]
        --gamma-table 0..65535,... [inactive]
        --threshold 0..100% (in steps of 1) [inactive]
        --brightness -100..100 (in steps of 1) [0]
        --lamp-off-scan[=(yes|no)] [no]
        --page-loaded[=(yes|no)] [inactive] [hardware]
        --scan[=(yes|no)] [no] [hardware])", color300, "mode=Color, depth=8, resolution=300"},
    {"genesys, fed by hand",
     R"(--mode Color|Gray [Gray]
        --depth 8|16 [8]
        --resolution 600|300|200|150dpi [150]
        -t 0..500mm [0]
        -y 0..500mm [500]
        -l 0..216mm [0]
        -x 0..216mm [216]
        --page-loaded[=(yes|no)] [yes] [hardware])", gray150, "br-y=355.6", feeder, 150},
    {"plustek, odd resolutions",
     R"(--mode Lineart|Gray|Color [Color]
        --depth 8|16 [8]
        --source Normal|Transparency|Negative [Normal]
        --resolution 50..1200dpi [50]
        --preview[=(yes|no)] [yes]
        -l 0..215mm [0]
        -t 0..297mm [0]
        -x 0..215mm [103]
        -y 0..297mm [76.21]
        --brightness -100..100% (in steps of 1) [0])", color300, "resolution=300, preview=no, br-x=215, br-y=297"},
    {"pixma",
     R"(--resolution 75|150|300|600dpi [75]
        --mode Color|Gray|48 bits color|16 bits gray|Lineart [48 bits color]
        --source Flatbed|Automatic Document Feeder|ADF Duplex [Flatbed]
        --button-controlled[=(yes|no)] [no]
        --custom-gamma[=(yes|no)] [yes]
        --gamma-table 0..255,... [inactive]
        -l 0..216.069mm [0]
        -t 0..355.6mm [0]
        -x 0..216.069mm [216.069]
        -y 0..355.6mm [355.6]
        --button-update
        --button-1 0 [0] [hardware])", gray150, "source=ADF Duplex, mode=Gray, resolution=150, custom-gamma=no", duplexFeeder, 150},
    {"epson2, duplex by mode",
     R"(--mode Lineart|Gray|Color [Lineart]
        --depth 8|16 [inactive]
        --brightness -4..3 [2]
        --sharpness -2..2 [0]
        --gamma-correction User defined (Gamma=1.0)|User defined (Gamma=1.8) [User defined (Gamma=1.8)]
        --resolution 75|100|150|200|240|300|400|600dpi [75]
        --threshold 0..255 [inactive]
        --preview[=(yes|no)] [no]
        -l 0..215.9mm [0]
        -t 0..297.18mm [0]
        -x 0..215.9mm [215.9]
        -y 0..297.18mm [297.18]
        --source Flatbed|Automatic Document Feeder [Flatbed]
        --auto-eject[=(yes|no)] [inactive]
        --adf-mode Simplex|Duplex [inactive])", color300,
     "source=Automatic Document Feeder, adf-mode=Duplex, mode=Color, resolution=300, brightness=0", duplexFeeder},
    {"epkowa, duplex by switch",
     R"(--mode Binary|Gray|Color [Binary]
        --depth 1|8 [1]
        --resolution 100|200|300|600dpi [100]
        --source Automatic Document Feeder|Flatbed [Flatbed]
        --duplex[=(yes|no)] [no]
        --scan-area Maximum|A4|A5 Landscape [A4]
        -l 0..215.9mm [0]
        -t 0..355.6mm [0]
        -x 0..215.9mm [210]
        -y 0..355.6mm [297])", color300,
     "source=Automatic Document Feeder, duplex=yes, scan-area=Maximum, mode=Color, depth=8, "
     "resolution=300, br-x=215.9, br-y=355.6", duplexFeeder},
    {"utsushi",
     R"(--doc-source Document Table|ADF [Document Table]
        --duplex[=(yes|no)] [no]
        --image-type Monochrome|Grayscale|Color [Monochrome]
        --resolution 50..600dpi [150]
        --scan-area Manual|Maximum|A4 [A4])", {PaperSource::flatbed, 300, ColorMode::blackWhite},
     "scan-area=Maximum, image-type=Grayscale, resolution=300"},
    {"epsonds, software crop on",
     R"(--source ADF Front|ADF Duplex [ADF Front]
        --mode Lineart|Gray|Color [Color]
        --depth 8|16 [8]
        --resolution 50..600dpi (in steps of 1) [300]
        --adf-skew[=(yes|no)] [yes]
        --adf-crp[=(yes|no)] [yes]
        -l 0..215.9mm [0]
        -t 0..393.7mm [0]
        -x 0..215.9mm [215.9]
        -y 0..393.7mm [393.7])", color300, "source=ADF Duplex, adf-crp=no, adf-skew=no, br-y=355.6", duplexFeeder},
    {"fujitsu, knows the paper's end",
     R"(--source ADF Front|ADF Back|ADF Duplex|Card Front [ADF Front]
        --mode Lineart|Halftone|Gray|Color [Lineart]
        --resolution 50..600dpi (in steps of 1) [600]
        --page-width 0..221.121mm (in steps of 0.0211639) [215.872]
        --page-height 0..876.695mm (in steps of 0.0211639) [279.364]
        -l 0..221.121mm (in steps of 0.0211639) [0]
        -t 0..876.695mm (in steps of 0.0211639) [0]
        -x 0..221.121mm (in steps of 0.0211639) [215.872]
        -y 0..876.695mm (in steps of 0.0211639) [279.364]
        --brightness -127..127 (in steps of 1) [0]
        --threshold 0..255 (in steps of 1) [0]
        --ald[=(yes|no)] [no] [advanced]
        --swdeskew[=(yes|no)] [yes] [advanced]
        --swdespeck 0..9 (in steps of 1) [3]
        --swcrop[=(yes|no)] [no] [advanced]
        --swskip 0..100% (in steps of 0.100006) [15]
        --page-loaded[=(yes|no)] [yes] [hardware]
        --scan[=(yes|no)] [no] [hardware])", color300,
     "source=ADF Duplex, ald=yes, mode=Color, resolution=300, swdeskew=no, swskip=0, swdespeck=0, "
     "page-width=221.12, page-height=863.59, br-x=221.12, br-y=863.59", duplexFeeder},
    {"canon_dr, asked for a resolution between two",
     R"(--source Flatbed|ADF Front|ADF Duplex [ADF Front]
        --mode Lineart|Gray|Color [Lineart]
        --resolution 200|300|600dpi [200]
        --page-width 0..216mm [215.9]
        --page-height 0..5588mm [279.4]
        -l 0..216mm [0]
        -t 0..5588mm [0]
        -x 0..216mm [215.9]
        -y 0..5588mm [279.4]
        --rollerdeskew[=(yes|no)] [no]
        --hwcrop[=(yes|no)] [yes]
        --adf-loaded[=(yes|no)] [yes] [hardware]
        --start[=(yes|no)] [no] [hardware])", {PaperSource::automatic, 250, ColorMode::gray},
     "source=ADF Duplex, mode=Gray, resolution=300, hwcrop=no, page-width=216, page-height=355.6, "
     "br-x=216, br-y=355.6", duplexFeeder,
     300},
    {"brother4",
     R"(--mode Black & White|Gray[Error Diffusion]|True Gray|24bit Color|24bit Color[Fast] [24bit Color]
        --resolution 100|150|200|300|400|600|1200dpi [200]
        --source FlatBed|Automatic Document Feeder(left aligned)|Automatic Document Feeder(left aligned,Duplex) [Automatic Document Feeder(left aligned)]
        --brightness -50..50% (in steps of 1) [inactive]
        --contrast -50..50% (in steps of 1) [inactive]
        -l 0..211.9mm (in steps of 0.0999908) [0]
        -t 0..355.6mm (in steps of 0.0999908) [0]
        -x 0..211.9mm (in steps of 0.0999908) [211.9]
        -y 0..355.6mm (in steps of 0.0999908) [355.6])",
     gray150, "source=Automatic Document Feeder(left aligned,Duplex), mode=True Gray, resolution=150",
     duplexFeeder, 150},
    {"brother, flatbed wanted",
     R"(--mode Black & White|True Gray|24bit Color[Fast]|24bit Color [Black & White]
        --resolution 100|300dpi [100]
        --source FlatBed|Automatic Document Feeder(centrally aligned) [Automatic Document Feeder(centrally aligned)])", flatbed300, "source=FlatBed, mode=24bit Color, resolution=300"},
    {"hpaio, duplex as a source of its own",
     R"(--mode Lineart|Gray|Color [Lineart]
        --resolution 75|100|150|200|300dpi [75]
        --source Flatbed|ADF|Duplex [Flatbed]
        --brightness -1000..1000 [0]
        --contrast -1000..1000 [300]
        --compression None|JPEG [JPEG]
        -l 0..215.9mm [0]
        -t 0..297.011mm [0]
        -x 0..215.9mm [215.9]
        -y 0..297.011mm [297.011])", {PaperSource::automatic, 600, ColorMode::color},
     "source=Duplex, mode=Color, resolution=300, contrast=0", duplexFeeder,
     300},
    {"airscan",
     R"(--resolution 75|100|200|300|600dpi [300]
        --mode Lineart|Gray|Color [Color]
        --source Flatbed|ADF|ADF Duplex [Flatbed]
        -l 0..215.9mm [0]
        -t 0..297.01mm [0]
        -x 0..215.9mm [215.9]
        -y 0..297.01mm [297.01]
        --brightness -100..100% (in steps of 1) [0]
        --negative[=(yes|no)] [no]
        --adf-justification-x left|center|right [inactive] [read-only])", gray150, "source=ADF Duplex, mode=Gray, resolution=200", duplexFeeder, 200},
    {"xerox_mfp, a source that decides by itself",
     R"(--resolution 75|100|150|200|300|600dpi [150]
        --mode Lineart|Halftone|Gray|Color [Color]
        --threshold 30..70% (in steps of 10) [inactive]
        --source Flatbed|ADF|Auto [Auto]
        -l 0..215.9mm (in steps of 1) [0]
        -t 0..297.18mm (in steps of 1) [0]
        -x 0..215.9mm (in steps of 1) [215]
        -y 0..297.18mm (in steps of 1) [297])", flatbed300, "source=Flatbed, resolution=300, br-x=215.9, br-y=297.18"},
    {"avision, variants of a mode",
     R"(--mode Lineart|Dithered|Gray|12bit Gray|16bit Gray|16bit Color|Color [Lineart]
        --resolution 50..1200dpi [150]
        --source Normal|ADF Front|ADF Back|ADF Duplex [Normal]
        -l 0..216mm [0]
        -t 0..406mm [0]
        -x 0..216mm [216]
        -y 0..406mm [300]
        --button-1[=(yes|no)] [no] [hardware])", color300, "source=ADF Duplex, mode=Color, resolution=300, br-y=355.6", duplexFeeder},
    {"kvs1025, a feeder without a source",
     R"(--mode bw|halftone|gray|color [bw]
        --resolution 100..600dpi (in steps of 10) [200]
        --duplex[=(yes|no)] [no]
        --feeder-mode single|continuous [single]
        --paper-size user_def|A4|A5 [A4]
        --fit-to-page[=(yes|no)] [yes]
        --inverse[=(yes|no)] [no])", {PaperSource::automatic, 142, ColorMode::color},
     "duplex=yes, feeder-mode=continuous, paper-size=user_def, mode=color, resolution=150, "
     "fit-to-page=no", duplexFeeder,
     150},
    {"umax, axes of their own and an area in pixels",
     R"(--mode Lineart|Gray|Color [Gray]
        --x-resolution 5..600dpi (in steps of 5) [100]
        --y-resolution 5..600dpi (in steps of 5) [100]
        -l 0..5100pel [0]
        -x 0..5100pel [1000]
        -t 0..7020pel [0]
        -y 0..7020pel [1000])", color300, "mode=Color, x-resolution=300, y-resolution=300, br-x=5100, br-y=7020"},
    {"resolutions as words, an older parallel port scanner",
     R"(--mode Color|Greyscale [Color]
        --resolution 75 dpi|150 dpi|600 dpi [75 dpi])", {PaperSource::flatbed, 200, ColorMode::gray},
     "mode=Greyscale, resolution=600 dpi", flatbed,
     600},
    {"only black and white, nothing else to set",
     "--mode Lineart [Lineart]\n--resolution 200dpi [200]", color300, "", flatbed, 200},
    {"no options at all", "", color300, ""},
};

/// What the tables' devices change by themselves: a mode brings the depth, a feeder its duplex.
void reveal(SaneOptions &options)
{
    for (SaneOption &option : options) {
        if (option.name == u"adf-mode" && !option.isActive) {
            option.isActive = true;
            option.value = QStringLiteral("Simplex");
        }
        if (option.name == u"depth" && !option.isActive) {
            option.isActive = true;
            option.value = 8;
        }
    }
}

TEST(OptionPlan, LeadsEveryDeviceToItsPage)
{
    for (const DeviceCase &c : devices) {
        SCOPED_TRACE(c.backend);
        SaneOptions options = parseOptionDump(c.dump);
        OptionPlan plan(c.wish);
        EXPECT_EQ(settle(plan, options, reveal), c.expected);
        const Capture capture = plan.capture(options);
        EXPECT_EQ(capture.isFeeder, c.kind != flatbed);
        EXPECT_EQ(capture.isDuplex, c.kind == duplexFeeder);
        EXPECT_EQ(capture.xDpi, c.dpi);
        EXPECT_EQ(capture.yDpi, c.dpi);
        EXPECT_EQ(capture.needsResampling, c.dpi != c.wish.dpi);
    }
}

constexpr const char *bothPlaces = R"(--source Flatbed|ADF [Flatbed]
                                      --mode Gray|Color [Color]
                                      --resolution 300dpi [300])";

TEST(OptionPlan, ASensorDecidesBetweenFeederAndFlatbed)
{
    const struct {
        const char *what;
        const char *sensor;
        PaperSource source;
        const char *expected;
    } cases[] = {
        {"paper",                  "--page-loaded[=(yes|no)] [yes] [hardware]", PaperSource::automatic,
         "source=ADF"                                                                                               },
        {"no paper",               "--page-loaded[=(yes|no)] [no] [hardware]",  PaperSource::automatic, ""          },
        {"paper, flatbed asked",   "--page-loaded[=(yes|no)] [yes] [hardware]", PaperSource::flatbed,
         ""                                                                                                         },
        {"another name",           "--doc-in-adf[=(yes|no)] [no] [hardware]",   PaperSource::automatic, ""          },
        {"a setting of that name", "--page-loaded[=(yes|no)] [no]",             PaperSource::automatic,
         "source=ADF"                                                                                               },
        {"not to be read",         "--page-loaded[=(yes|no)] [hardware]",       PaperSource::automatic,
         "source=ADF"                                                                                               },
        {"none",                   "",                                          PaperSource::automatic, "source=ADF"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QByteArray dump = QByteArray(bothPlaces) + '\n' + c.sensor;
        SaneOptions options = parseOptionDump(dump);
        OptionPlan plan({c.source, 300, ColorMode::color});
        EXPECT_EQ(settle(plan, options), c.expected);
    }
}

TEST(OptionPlan, ASensorThatWakesUpWithTheFeederStillDecides)
{
    SaneOptions options = parseOptionDump(bothPlaces);
    options += parseOptionDump("--page-loaded[=(yes|no)] [inactive] [hardware]");
    OptionPlan plan(color300);
    const std::string settings = settle(plan, options, [](SaneOptions &changed) {
        optionOf(changed, u"page-loaded").isActive = true;
        optionOf(changed, u"page-loaded").value = false;
    });
    EXPECT_EQ(settings, "source=ADF, source=Flatbed");
    EXPECT_FALSE(plan.fallBackToFlatbed());
}

TEST(OptionPlan, AnEmptyFeederLeavesThePageToTheFlatbed)
{
    SaneOptions options = parseOptionDump(bothPlaces);
    OptionPlan plan(gray150);
    EXPECT_EQ(settle(plan, options), "source=ADF, mode=Gray");
    ASSERT_TRUE(plan.fallBackToFlatbed());
    EXPECT_EQ(settle(plan, options), "source=Flatbed");
    EXPECT_FALSE(plan.capture(options).isFeeder);
    EXPECT_FALSE(plan.fallBackToFlatbed());

    SaneOptions feederAlone = parseOptionDump("--source ADF Front|ADF Duplex [ADF Front]");
    OptionPlan feederPlan(flatbed300);
    EXPECT_EQ(settle(feederPlan, feederAlone), "source=ADF Duplex");
    EXPECT_FALSE(feederPlan.fallBackToFlatbed());
}

TEST(OptionPlan, ADeviceThatRefusesEverythingIsAskedOnce)
{
    const SaneOptions options = parseOptionDump(devices[0].dump);
    OptionPlan plan(color300);
    QStringList asked;
    while (const auto setting = plan.nextSetting(options))
        asked.append(setting->name);
    EXPECT_THAT(asked, testing::ElementsAre(QStringLiteral("mode"), QStringLiteral("depth"),
                                            QStringLiteral("resolution")));
}

TEST(OptionPlan, AnAreaStaysWithinThePixelLimit)
{
    // 1200 dpi on 17 inches: 20400 pixels wide, so no more than 14705 lines.
    SaneOptions options = parseOptionDump(R"(--source ADF [ADF]
        --resolution 1200dpi [1200]
        --ald[=(yes|no)] [yes]
        -l 0..431.8mm [0]
        -t 0..3000mm [0]
        -x 0..431.8mm [431.8]
        -y 0..3000mm [297])");
    OptionPlan plan({PaperSource::automatic, 1200, ColorMode::color});
    EXPECT_EQ(settle(plan, options), "br-y=311.27");
    EXPECT_NEAR(plan.capture(options).areaMm.height(), 311.27, 0.01);
    EXPECT_NEAR(plan.capture(options).areaMm.width(), 431.8, 0.01);
}

TEST(PaperSensors, OnlyAButtonOfTheDeviceIsAButton)
{
    const struct {
        const char *dump;
        bool isPressed;
    } cases[] = {
        {"--scan[=(yes|no)] [yes] [hardware]",                                       true },
        {"--scan[=(yes|no)] [no] [hardware]",                                        false},
        {"--scan[=(yes|no)] [yes]",                                                  false},
        {"--email[=(yes|no)] [yes] [hardware]\n--start[=(yes|no)] [yes] [hardware]", true },
        {"--button-pressed none|scan|copy [scan] [hardware]",                        true },
        {"--button-pressed none|scan|copy [copy] [hardware]",                        false},
        {"--scan",                                                                   false},
    };
    for (const auto &c : cases)
        EXPECT_EQ(isScanButtonPressed(parseOptionDump(c.dump)), c.isPressed) << c.dump;
}

} // namespace
} // namespace scanengine
