// The rules of the home screen, without a window.

#include "home/AdvancedPanel.h"
#include "home/BaseWidget.h"
#include "home/HomeScreen.h"
#include "home/ScanArea.h"
#include "tests/model/AppModelFixture.h"

#include <QSignalSpy>
#include <QTimerEvent>

namespace velmor {
namespace {

using testing::Contains;
using testing::ElementsAre;

class HomeStateTest : public AppModelFixture {
protected:
    HomeStateTest()
    {
        card.setModel(model.get());
        area.setModel(model.get());
        screen.setModel(model.get());
        panel.setModel(model.get());
    }

    void savePreset(const char *name, ScanQuality quality = ScanQuality::low)
    {
        ScanSettings settings = model->settings();
        settings.quality = quality;
        settings.brightness = 40;
        model->setSettings(settings);
        model->saveCurrentAsPreset(QString::fromUtf8(name));
    }

    QTimer &bubbleHide() { return *card.findChild<QTimer *>(); }

    /// Lets the time pass that the bubble is held open for.
    void passBubbleTime()
    {
        QTimerEvent event(bubbleHide().timerId());
        QCoreApplication::sendEvent(&bubbleHide(), &event);
    }

    BaseWidget card;
    ScanArea area;
    HomeScreen screen;
    AdvancedPanel panel;
};

TEST_F(HomeStateTest, TheTabInForceIsTheModels)
{
    EXPECT_EQ(card.tab(), u"Document");
    EXPECT_THAT(card.tabItems(), ElementsAre(u"Document", u"Photo"));
    EXPECT_EQ(card.presetName(), u"Preset");

    savePreset("Invoices");
    savePreset("Letters");
    const struct {
        const char *click;
        QString tab, presetName, activePreset;
    } cases[] = {
        {"Photo",    u"Photo"_qs,    u"Invoices"_qs, {}            },
        {"Document", u"Document"_qs, u"Invoices"_qs, {}            },
        {"Preset",   u"Preset"_qs,   u"Invoices"_qs, u"Invoices"_qs},
    };
    EXPECT_EQ(card.tab(), u"Preset") << "saving puts a preset in force";
    EXPECT_EQ(card.activePreset(), u"Letters");
    for (const auto &c : cases) {
        SCOPED_TRACE(c.click);
        card.clickTab(QString::fromUtf8(c.click));
        EXPECT_EQ(card.tab(), c.tab);
        EXPECT_EQ(card.presetName(), c.presetName);
        EXPECT_EQ(card.activePreset(), c.activePreset);
        EXPECT_THAT(card.tabItems(), ElementsAre(u"Document", u"Photo", u"Preset"));
    }
    EXPECT_EQ(model->settings().brightness, 40);
}

TEST_F(HomeStateTest, AClickOnThePresetInForceDiscardsWhatWasChangedByHand)
{
    savePreset("Invoices", ScanQuality::high);
    panel.setQuality(0);
    ASSERT_TRUE(panel.modified());
    card.clickTab(u"Preset"_qs);
    EXPECT_EQ(model->settings().quality, ScanQuality::high);
    EXPECT_FALSE(panel.modified());
}

TEST_F(HomeStateTest, ChipsNameWhatATabSets)
{
    const struct {
        ScanSettings settings;
        QStringList chips;
    } cases[] = {
        {{.quality = ScanQuality::low, .colorMode = ColorMode::bw, .ocr = false, .batch = false},
         {u"150 dpi"_qs, u"B&W"_qs}                                                                                                       },
        {{.quality = ScanQuality::high, .ocr = true, .batch = false},
         {u"600 dpi"_qs, u"Auto"_qs, u"+ OCR"_qs}                                                                                         },
        {{.ocr = false, .batch = true},                                                           {u"300 dpi"_qs, u"Auto"_qs, u"Batch"_qs}},
        {{.colorMode = ColorMode::grayscale, .ocr = true, .batch = true},
         {u"300 dpi"_qs, u"Gray"_qs, u"+ OCR"_qs, u"Batch"_qs}                                                                            },
    };
    for (const auto &c : cases)
        EXPECT_EQ(settingsChips(c.settings), c.chips);

    panel.setQuality(2);
    EXPECT_THAT(card.chips(), Contains(u"600 dpi")) << "follows changes by hand";
}

TEST_F(HomeStateTest, EveryClickHoldsTheBubbleOpenForItsFullTime)
{
    card.clickTab(u"Photo"_qs);
    bubbleHide().start(std::chrono::hours(1));
    card.clickTab(u"Photo"_qs);
    EXPECT_EQ(bubbleHide().interval(), 1800) << "the clock begins anew";
    card.setHoveringTabs(true);
    card.setHoveringTabs(false);
    EXPECT_TRUE(card.showBubble()) << "however the pointer moves";
    passBubbleTime();
    EXPECT_FALSE(card.showBubble());
    EXPECT_FALSE(card.bubbleFlash());
}

TEST_F(HomeStateTest, TheMenuClosesWithItsLastPreset)
{
    savePreset("Invoices");
    savePreset("Letters");
    card.clickTab(u"Document"_qs);
    passBubbleTime();

    card.choosePreset(u"Letters"_qs);
    EXPECT_TRUE(card.bubbleFlash());
    card.setShowPresetMenu(true);
    card.deletePreset(u"Letters"_qs);
    EXPECT_TRUE(card.showPresetMenu());
    EXPECT_EQ(card.tab(), u"Document");
    card.deletePreset(u"nothing of that name"_qs);
    EXPECT_THAT(card.presetNames(), ElementsAre(u"Invoices"));
    card.enterTab(u"Preset"_qs);
    card.deletePreset(u"Invoices"_qs);
    EXPECT_FALSE(card.showPresetMenu());
    EXPECT_THAT(card.tabItems(), ElementsAre(u"Document", u"Photo"));
    EXPECT_EQ(card.displayTab(), u"Document") << "the hovered tab is gone";
    card.clickTab(u"Preset"_qs);
    EXPECT_EQ(card.tab(), u"Document");
}

TEST_F(HomeStateTest, TheScanAreaFollowsTheModel)
{
    EXPECT_EQ(area.state(), ScanArea::State::Button);
    EXPECT_FALSE(area.ready());
    EXPECT_EQ(area.hint(), u"Tap to find scanner");

    QStringList hints;
    QObject::connect(&area, &ScanArea::hintChanged, [&] { hints.append(area.hint()); });
    QList<ScanArea::State> states;
    QObject::connect(&area, &ScanArea::stateChanged, [&] { states.append(area.state()); });
    QStringList progress;
    QObject::connect(&area, &ScanArea::assemblyTextChanged,
                     [&] { progress.append(area.assemblyText()); });
    startEngine("scan: " + doneWith(2));
    EXPECT_TRUE(area.ready());
    EXPECT_THAT(hints, ElementsAre(u"Looking for scanners…", u"Tap to find scanner"));

    area.press();
    EXPECT_EQ(area.state(), ScanArea::State::Scanning);
    waitForEnd();
    EXPECT_THAT(states, ElementsAre(ScanArea::State::Scanning, ScanArea::State::Button,
                                    ScanArea::State::Success))
        << "assembling is no state of its own";
    EXPECT_EQ(area.successText(), u"2 pages");
    EXPECT_THAT(progress, ElementsAre(u"page 1 of 2", u"page 2 of 2"));
    EXPECT_EQ(area.assemblyFraction(), 1);
    EXPECT_FALSE(area.assembling());
    EXPECT_EQ(card.scanCount(), 1);
    EXPECT_TRUE(screen.showScans());
}

TEST_F(HomeStateTest, AFailureShowsUntilTheNextScan)
{
    QStringList errors;
    QObject::connect(&card, &BaseWidget::lastErrorChanged,
                     [&] { errors.append(card.lastError()); });
    receive({R"({"event":"error","message":"Jam"})", R"({"event":"scanStarted"})"});
    EXPECT_THAT(errors, ElementsAre(u"Jam", u""));
}

TEST_F(HomeStateTest, TheMasterSwitchStandsForFiveSteps)
{
    const auto count = [this] {
        const ScanSettings &s = model->settings();
        return s.cropEnabled + s.deskewEnabled + s.cleanEnabled + s.blankRemovalEnabled +
               s.autoLevelsEnabled;
    };
    const struct {
        std::array<bool, 5> on;
        ToggleState state;
        int afterClick;
    } cases[] = {
        {{true, true, true, true, true},      ToggleState::On,      0},
        {{false, false, false, false, false}, ToggleState::Off,     5},
        {{true, false, true, true, false},    ToggleState::Partial, 5},
        {{false, true, false, false, false},  ToggleState::Partial, 5},
        {{false, false, false, false, true},  ToggleState::Partial, 5},
    };
    for (const auto &c : cases) {
        panel.setCropEnabled(c.on[0]);
        panel.setDeskewEnabled(c.on[1]);
        panel.setCleanEnabled(c.on[2]);
        panel.setBlankRemovalEnabled(c.on[3]);
        panel.setAutoLevelsEnabled(c.on[4]);
        EXPECT_EQ(panel.enhanceState(), c.state);
        panel.toggleAllEnhance();
        EXPECT_EQ(count(), c.afterClick);
    }
}

TEST_F(HomeStateTest, TheFolderIsNamedByTheEndOfItsPath)
{
    const struct {
        const char *path, *label;
    } cases[] = {
        {"/home/ada/Documents/Scans", "…/Documents/Scans"},
        {"/a/b/c",                    "…/b/c"            },
        {"/srv/scans/",               "srv/scans"        },
        {"/scans",                    "scans"            },
        {"/",                         ""                 },
        {"/home/a#b/50% ü",           "…/a#b/50% ü"      },
    };
    for (const auto &c : cases) {
        const QUrl url = QUrl::fromLocalFile(QString::fromUtf8(c.path));
        EXPECT_EQ(folderLabel(url), QString::fromUtf8(c.label)) << c.path;
    }

    const QUrl chosen = QUrl::fromLocalFile(folder.filePath(u"chosen"_qs));
    panel.chooseFolder(chosen);
    EXPECT_EQ(panel.folder(), chosen);
    panel.chooseFolder({});
    panel.chooseFolder(QUrl(u"smb://server/share"_qs));
    EXPECT_EQ(model->settings().outputFolder, chosen) << "no file could be written there";
}

TEST_F(HomeStateTest, APresetIsSavedOnlyWithANameAndSomethingToKeep)
{
    panel.setOcr(true);
    EXPECT_FALSE(panel.modified());
    ScanSettings settings = model->settings();
    settings.brightness = 100;
    model->setSettings(settings);
    panel.chooseFolder(QUrl::fromLocalFile(folder.path()));
    EXPECT_FALSE(panel.modified()) << "brightness and folder don't count";
    panel.setColorMode(3);
    EXPECT_EQ(model->settings().colorMode, ColorMode::bw);
    EXPECT_TRUE(panel.modified());

    panel.setProperty("presetIncludesFolder", true);
    panel.setProperty("showPresetSave", true);
    panel.setPresetName(u" \t "_qs);
    EXPECT_FALSE(panel.canSavePreset());
    panel.savePreset();
    EXPECT_EQ(model->presets().size(), 0);
    EXPECT_TRUE(panel.property("showPresetSave").toBool());

    panel.setPresetName(u" Plans "_qs);
    EXPECT_TRUE(panel.canSavePreset());
    panel.savePreset();
    EXPECT_EQ(card.activePreset(), u"Plans");
    EXPECT_TRUE(model->presets().first().folderBookmark);
    EXPECT_FALSE(panel.property("showPresetSave").toBool());
    EXPECT_EQ(panel.presetName(), u"");
    EXPECT_TRUE(panel.property("presetIncludesFolder").toBool()) << "kept for the next time";
    EXPECT_EQ(screen.toast(), u"Saved preset “Plans”");
}

TEST_F(HomeStateTest, AnEqualValueIsNoChange)
{
    savePreset("Invoices");
    QSignalSpy tabs(&card, &BaseWidget::presetNamesChanged);
    QSignalSpy chips(&card, &BaseWidget::chipsChanged);
    QSignalSpy settings(&panel, &AdvancedPanel::settingsChanged);
    model->setSettings(model->settings());
    model->saveCurrentAsPreset(u"Invoices"_qs);
    EXPECT_EQ(tabs.size() + chips.size() + settings.size(), 0);
}

TEST(BuildStampTest, IsTheDateOfTheProgram)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"program"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(
        file.setFileTime(QDateTime({2031, 2, 9}, {7, 5}), QFileDevice::FileModificationTime));
    EXPECT_EQ(buildStamp(file.fileName()), QStringLiteral("b\u20099.2. 07:05"));
    EXPECT_EQ(buildStamp(folder.filePath(u"missing"_qs)), u"dev");
    EXPECT_EQ(buildStamp({}), u"dev");
}

} // namespace
} // namespace velmor
