#include "SaneDriverFixture.h"
#include "TestImages.h"

#include <future>

namespace scanengine {
namespace {

using namespace std::chrono_literals;

TEST_F(SaneDriverTest, AFeederGivesItsSheetsAndThenNoPaper)
{
    use({});
    const auto session = begin(idOf("tester"));
    ASSERT_TRUE(session);
    for (int sheet = 1; sheet <= 10; ++sheet) {
        const SheetResult read = this->read(*session);
        ASSERT_TRUE(std::holds_alternative<QImage>(read)) << messageOf(read);
        EXPECT_EQ(greyLevel(std::get<QImage>(read)), 255);
        const FeedResult next = feed(*session);
        EXPECT_EQ(std::holds_alternative<SheetMoving>(next), sheet < 10) << messageOf(next);
    }
    const FeedResult again = session->feedSheet(WhenEmpty::waitForPaper, m_stop.get_token());
    EXPECT_TRUE(std::holds_alternative<SheetMoving>(again)) << "the feeder was filled again";
}

TEST_F(SaneDriverTest, TheFlatbedGivesOnePageAndCantTellOfAnother)
{
    use({});
    m_settings.source = PaperSource::flatbed;
    const auto session = begin(idOf("tester"));
    ASSERT_TRUE(session);
    EXPECT_TRUE(std::holds_alternative<QImage>(read(*session)));
    for (const WhenEmpty whenEmpty : {WhenEmpty::finish, WhenEmpty::waitForPaper}) {
        const FeedResult fed = session->feedSheet(whenEmpty, m_stop.get_token());
        EXPECT_TRUE(std::holds_alternative<NoPaper>(fed)) << messageOf(fed);
    }
}

TEST_F(SaneDriverTest, PagesOfEveryKindComeWhole)
{
    const struct {
        const char *what;
        TestScanners::Setting setting;
        ColorMode mode;
        int width; // of 200 mm at 75 dpi, but a hand scanner's 110 mm
    } cases[] = {
        {"grey",           {"mode", "Gray"},             ColorMode::gray,  590},
        {"colour",         {"mode", "Color"},            ColorMode::color, 590},
        {"three passes",   {"three-pass", "true"},       ColorMode::color, 590},
        {"16 bits",        {"depth", "16"},              ColorMode::color, 590},
        {"1 bit",          {"depth", "1"},               ColorMode::gray,  590},
        {"unknown height", {"hand-scanner", "true"},     ColorMode::gray,  324},
        {"padded lines",   {"ppl-loss", "7"},            ColorMode::gray,  583},
        {"vague promises", {"fuzzy-parameters", "true"}, ColorMode::color, 590},
        {"small pieces",   {"read-limit", "true"},       ColorMode::gray,  590},
        {"no waiting",     {"non-blocking", "true"},     ColorMode::gray,  590},
        {"a descriptor",   {"select-fd", "true"},        ColorMode::gray,  590},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        use({
            c.setting, {"read-limit-size", "999"}
        });
        m_settings.colorMode = c.mode;
        const auto session = begin(idOf("tester"));
        ASSERT_TRUE(session);
        const SheetResult sheet = read(*session);
        ASSERT_TRUE(std::holds_alternative<QImage>(sheet)) << messageOf(sheet);
        const auto &image = std::get<QImage>(sheet);
        EXPECT_NEAR(image.width(), c.width, 1);
        EXPECT_NEAR(image.dotsPerMeterX(), 75 / 0.0254, 1);
        EXPECT_EQ(greyLevel(image), 255);
    }
}

TEST_F(SaneDriverTest, TheDevicesStatesBecomeSentences)
{
    const struct {
        const char *state;
        SaneStatus status;
    } cases[] = {
        {"\"SANE_STATUS_JAMMED\"",        SaneStatus::jammed      },
        {"\"SANE_STATUS_COVER_OPEN\"",    SaneStatus::coverOpen   },
        {"\"SANE_STATUS_ACCESS_DENIED\"", SaneStatus::accessDenied},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.state);
        use({
            {"read-status-code", c.state}
        });
        const auto session = begin(idOf("tester"));
        ASSERT_TRUE(session);
        EXPECT_EQ(messageOf(read(*session)), statusText(c.status).toStdString());
    }
}

TEST_F(SaneDriverTest, CancellingInAPageLetsTheDeviceGo)
{
    use({
        {"read-delay",          "true"  },
        {"read-delay-duration", "200000"}
    });
    m_settings.dpi = 600;
    const QString id = idOf("tester");
    const auto session = begin(id);
    ASSERT_TRUE(session);
    auto page = std::async(std::launch::async, [&] { return read(*session); });
    m_stop.request_stop();
    ASSERT_EQ(page.wait_for(10s), std::future_status::ready);
    EXPECT_TRUE(std::holds_alternative<Cancelled>(page.get()));
}

TEST_F(SaneDriverTest, ADeviceThatStaysBusyIsAFaultAndToldOnce)
{
    SaneLimits limits = usualLimits;
    limits.busy = 50ms;
    limits.busyRetry = 10ms;
    for (const char *fault : {"busy open", "busy start"}) {
        SCOPED_TRACE(fault);
        useBad(limits);
        const QString id = idOf("Bad");
        m_scanners->setFault(QLatin1StringView(fault));
        OpenResult opened = open(id);
        std::string message = messageOf(opened);
        if (auto *session = std::get_if<std::unique_ptr<ScanSession>>(&opened)) {
            EXPECT_EQ(messageOf(feed(**session)), "no fault");
            EXPECT_TRUE(std::holds_alternative<QImage>(read(**session)));
            message = messageOf(feed(**session));
        }
        EXPECT_EQ(message, statusText(SaneStatus::deviceBusy).toStdString());
        EXPECT_EQ(m_told, QStringList{waitingForBusyText()});
    }
}

} // namespace
} // namespace scanengine
