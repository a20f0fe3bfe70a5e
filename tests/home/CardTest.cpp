// The card as the user sees and handles it, in a window.

#include "tests/home/CardFixture.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QSignalSpy>
#include <QTimerEvent>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <private/qguiapplication_p.h>

namespace velmor {
namespace {

using testing::ElementsAre;

class CardTest : public CardFixture {
protected:
    void savePreset(const char *name)
    {
        ScanSettings settings = model->settings();
        settings.quality = ScanQuality::low;
        model->setSettings(settings);
        model->saveCurrentAsPreset(QString::fromUtf8(name));
        settle();
    }

    void passBubbleTime()
    {
        for (QTimer *timer : view.rootObject()->findChildren<QTimer *>()) {
            QTimerEvent event(timer->timerId());
            QCoreApplication::sendEvent(timer, &event);
        }
    }

    /// Runs until the item of this name is as visible as said: fades end by themselves.
    bool fadesTo(const char *name, double opacity)
    {
        return waitUntil([&] {
            settle();
            return item(name) && item(name)->opacity() == opacity;
        });
    }

    /// Of the interface font at this size in pixels.
    static double lineHeight(int size)
    {
        QFont font = QGuiApplication::font();
        font.setPixelSize(size);
        return QFontMetricsF(font).height();
    }

    QStringList chips()
    {
        QStringList texts;
        QQuickItem *const first = item("chip");
        for (const QQuickItem *chip :
             first ? first->parentItem()->childItems() : QList<QQuickItem *>()) {
            if (chip->objectName() == u"chip" && chip->isVisible())
                texts.append(chip->property("text").toString());
        }
        return texts;
    }

    /// Where Tab leads, from here to `last`.
    QStringList tabOrder(const QString &last, Qt::Key key = Qt::Key_Tab)
    {
        QStringList order;
        do {
            press(key);
            order.append(focused());
        } while (order.last() != last && order.size() < 40);
        return order;
    }
};

TEST_F(CardTest, StandsWhereItShould)
{
    savePreset("Invoices");
    model->setShowAdvanced(true);
    passBubbleTime();
    settle();
    const QRectF pill = place("pillTrack");
    const QRectF area = place("scanArea");
    const QRectF bubble = place("bubbleCard");
    const QRectF panel = place("advancedPanel");
    const struct {
        const char *what;
        double is, wanted;
    } cases[] = {
        {"width of the card",                place("card").width(),                                               380           },
        {"first light, left",                place("closeLight").left(),                                          12            },
        {"first light, top",                 place("closeLight").top(),                                           12            },
        {"size of a light",                  place("minimiseLight").width(),                                      12            },
        {"second light, left",               place("minimiseLight").left(),                                       12 + 12 + 8   },
        {"brand picture, top",               place("brandMark").top(),                                            28            },
        {"brand picture, size",              place("brandMark").height(),                                         30            },
        {"brand picture to name",            place("brandName").left() - place("brandMark").right(),              9             },
        {"brand to tabs",                    pill.top() - place("brandMark").bottom(),                            4 + 14        },
        {"pill, left",                       pill.left(),                                                         30            },
        {"pill, width",                      pill.width(),                                                        320           },
        {"tab below the pill's edge",        place("tabPhoto").top() - pill.top(),                                4             },
        {"between tabs",                     place("tabPhoto").left() - place("tabDocument").right(),             2             },
        {"padding of a tab's height",        place("tabPhoto").height() - 2 * 11,                                 lineHeight(14)},
        {"capsule as its tab, left",         place("capsule").left() - place("tabPreset").left(),                 0             },
        {"capsule as its tab, width",        place("capsule").width() - place("tabPreset").width(),               0             },
        {"chevron to the tab's edge",        place("tabPreset").right() - place("chevron").right(),               4             },
        {"chevron, width",                   place("chevron").width(),                                            24            },
        {"chevron, height",                  place("chevron").height(),                                           38            },
        {"arrow below the pill",             place("bubbleArrow").top() - pill.bottom(),                          6             },
        {"arrow, width",                     place("bubbleArrow").width(),                                        16            },
        {"arrow, height",                    place("bubbleArrow").height(),                                       7             },
        {"arrow under its tab",              place("bubbleArrow").center().x() - place("tabPreset").center().x(),
         0                                                                                                                      },
        {"bubble below the arrow",           bubble.top() - place("bubbleArrow").bottom(),                        0             },
        {"chip in the bubble",               place("chip").left() - bubble.left(),                                10            },
        {"chip below the bubble's edge",     place("chip").top() - bubble.top(),                                  7             },
        {"bubble to scan area",              area.top() - bubble.bottom(),                                        14            },
        {"scan area, height",                area.height(),                                                       104           },
        {"grey circle, size",                place("circle").width(),                                             84            },
        {"grey circle, middle",              place("circle").center().y() - area.center().y(),                    0             },
        {"hint around its text",             place("hint").height() - 2 * 8,                                      lineHeight(12)},
        {"scan area to bottom bar",          place("bottomBar").top() - area.bottom(),                            14            },
        {"settings, left",                   place("settingsButton").left(),                                      30            },
        {"scans, right",                     place("scansButton").right(),                                        350           },
        {"bottom bar to the card's end",     place("card").bottom() - place("bottomBar").bottom(),                14            },
        {"hairline below the card",          place("hairline").top() - place("card").bottom(),                    4             },
        {"hairline, height",                 place("hairline").height(),                                          1             },
        {"panel, left",                      panel.left(),                                                        28            },
        {"panel, right",                     panel.right(),                                                       380 - 28      },
        {"hairline to panel",                panel.top() - place("hairline").bottom(),                            16            },
        {"panel to the window's end",        view.height() - panel.bottom(),                                      24            },
        {"between quality and colour",       place("colorMode").top() - place("quality").bottom(),                10            },
        {"colour to batch",                  place("batch").top() - place("colorMode").bottom(),                  10            },
        {"toggle at the right end",          panel.right() - place("master").right(),                             0             },
        {"toggle, width",                    place("master").width(),                                             38            },
        {"toggle, height",                   place("master").height(),                                            22            },
        {"chevron of the steps, size",       place("fineTune").width(),                                           20            },
        {"save button to the panel's right", panel.right() - place("saveAsPreset").right(),                       0             },
    };
    for (const auto &c : cases)
        EXPECT_NEAR(c.is, c.wanted, 1) << c.what;
}

TEST_F(CardTest, ALongPresetNameKeepsTheTabsWidth)
{
    savePreset("X");
    const double width = place("tabPreset").width();
    savePreset("Invoices of the third floor, both sides, 2026");
    EXPECT_EQ(place("tabPreset").width(), width);
    click("chevron");
    EXPECT_GT(place("presetRow1").width(), 190) << "the menu has room for more of it";
    press(Qt::Key_Escape);
    click("tabPhoto");
    EXPECT_NEAR(place("tabPreset").width(), width - 4 - 14, 1) << "without the chevron's room";
    EXPECT_FALSE(item("chevron"));
}

TEST_F(CardTest, AClickOnATabPutsItInForceAndFlashesTheBubble)
{
    EXPECT_TRUE(fadesTo("settingsBubble", 0));
    click("tabPhoto");
    QTest::mouseMove(&view, middle("brandRow"));
    EXPECT_EQ(model->selectedPreset(), DocumentType::photo);
    EXPECT_NEAR(place("capsule").left(), place("tabPhoto").left(), 1);
    EXPECT_TRUE(fadesTo("settingsBubble", 1));
    EXPECT_THAT(chips(), ElementsAre(u"300 dpi", u"Color"));
    passBubbleTime();
    EXPECT_TRUE(fadesTo("settingsBubble", 0));
    click("chip");
    EXPECT_FALSE(model->showAdvanced()) << "what can't be seen can't be clicked";
}

TEST_F(CardTest, ThePointerPreviewsATabWithoutChoosingIt)
{
    hover("tabPhoto");
    EXPECT_TRUE(fadesTo("settingsBubble", 1));
    EXPECT_NEAR(place("bubbleArrow").center().x(), place("tabPhoto").center().x(), 1);
    EXPECT_NEAR(place("capsule").left(), place("tabDocument").left(), 1);
    EXPECT_THAT(chips(), ElementsAre(u"300 dpi", u"Color"));
    hover("tabDocument");
    EXPECT_THAT(chips(), ElementsAre(u"300 dpi", u"Gray", u"Batch"));
    hover("brandRow");
    EXPECT_TRUE(fadesTo("settingsBubble", 0));
    EXPECT_EQ(model->selectedPreset(), DocumentType::document);
    EXPECT_EQ(model->settings().colorMode, ColorMode::grayscale);
}

TEST_F(CardTest, AChipLeadsToAllSettings)
{
    click("tabDocument");
    ASSERT_TRUE(fadesTo("settingsBubble", 1));
    click("chip");
    EXPECT_TRUE(model->showAdvanced());
    EXPECT_TRUE(item("advancedPanel"));
}

TEST_F(CardTest, TheMenuChoosesAndDeletes)
{
    savePreset("Invoices");
    savePreset("Letters");
    click("chevron");
    ASSERT_TRUE(item("presetRow1"));
    EXPECT_GT(place("presetRow0").top(), place("chevron").bottom());
    click("presetRow0");
    EXPECT_EQ(model->activeCustomPreset()->name, u"Invoices");
    EXPECT_TRUE(waitUntil([&] { return !item("presetRow0"); }));

    click("chevron");
    hover("presetRow0");
    click("deletePreset");
    EXPECT_EQ(model->presets().size(), 1);
    EXPECT_EQ(model->presets().first().name, u"Letters");
    EXPECT_FALSE(model->activeCustomPreset()) << "the chevron is gone with the preset in force";
}

TEST_F(CardTest, TheKeyboardReachesThePresets)
{
    savePreset("Invoices");
    savePreset("Letters");
    item("chevron")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    ASSERT_TRUE(waitUntil([&] { return focused() == u"presetRow1"; })) << focused().toStdString();
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), u"presetRow0");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"deletePreset");
    press(Qt::Key_Return);
    EXPECT_EQ(model->presets().size(), 1);
    EXPECT_EQ(focused(), u"presetRow0") << "the next row takes the place of the deleted one";
    press(Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return !item("presetRow0"); }));
    EXPECT_EQ(focused(), u"chevron");
}

TEST_F(CardTest, TabLeadsThroughEverythingInTheOrderOfReading)
{
    startEngine("");
    savePreset("Invoices");
    item("closeLight")->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_THAT(tabOrder(u"scansButton"_qs),
                ElementsAre(u"minimiseLight", u"tabDocument", u"tabPhoto", u"tabPreset", u"chevron",
                            u"chip", u"chip", u"chip", u"scanButton", u"settingsButton",
                            u"scansButton"));

    model->selectPreset(DocumentType::document);
    item("tabDocument")->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_THAT(tabOrder(u"settingsButton"_qs),
                ElementsAre(u"tabPhoto", u"tabPreset", u"chip", u"chip", u"chip", u"chip",
                            u"scanButton", u"settingsButton"))
        << "tabs show other chips on the way than the one in force";

    item("tabPhoto")->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(fadesTo("settingsBubble", 1)) << "the keyboard's focus shows what a tab sets, too";
    press(Qt::Key_Return);
    EXPECT_EQ(model->selectedPreset(), DocumentType::photo);
    item("settingsButton")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_TRUE(model->showAdvanced());
    item("scansButton")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    EXPECT_TRUE(model->showScans());
}

TEST_F(CardTest, TheScanAreaHasThreeStates)
{
    EXPECT_TRUE(item("hint"));
    startEngine("scan: print {\"event\":\"scanStarted\"}\ncancel: " + doneWith(1));
    settle();
    EXPECT_FALSE(item("hint"));
    EXPECT_NEAR(place("circle").width(), 84 * 1.1, 1);
    click("scanButton");
    ASSERT_TRUE(waitUntil([this] { return statusTexts.contains(u"Scanning…"_qs); }));
    settle();
    EXPECT_FALSE(item("scanButton"));
    EXPECT_NEAR(place("stopButton").width(), 84, 1);
    EXPECT_NEAR(place("statusRow").top() - place("stopButton").bottom(), 8, 1);
    click("stopButton");
    waitForEnd();
    settle();
    EXPECT_FALSE(item("stopButton"));
    EXPECT_NEAR(place("success").width(), 84, 1);
    EXPECT_EQ(item("success")->property("text").toString(), u"1 page") << "no plural";
    EXPECT_EQ(item("scanCount")->property("text").toString(), u"1");
}

TEST_F(CardTest, TheKeyboardGoesOnWithTheButtonThatTakesTheOthersPlace)
{
    startEngine("scan: print {\"event\":\"scanStarted\"}\ncancel: print "
                "{\"event\":\"error\",\"message\":\"Jam\"}");
    settle();
    click("scanButton");
    ASSERT_TRUE(waitUntil([this] { return item("stopButton") != nullptr; }));
    EXPECT_NE(focused(), u"stopButton") << "the pointer needs no focus";
    click("stopButton");
    ASSERT_TRUE(waitUntil([this] { return item("scanButton") != nullptr; }));

    item("scanButton")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([this] { return focused() == u"stopButton"; }))
        << focused().toStdString();
    press(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([this] { return focused() == u"scanButton"; }))
        << focused().toStdString();
}

TEST_F(CardTest, AFailureShowsAsSignAndToast)
{
    receive({R"({"event":"error","message":"Jam"})"});
    settle();
    EXPECT_NEAR(place("failure").left() - place("settingsButton").right(), 8, 1);
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(item("failure"));
    ASSERT_TRUE(told);
    EXPECT_EQ(told->role(), QAccessible::AlertMessage);
    EXPECT_EQ(told->text(QAccessible::Name), u"Jam");
    ASSERT_TRUE(item("toast"));
    EXPECT_NEAR(place("toast").bottom(), view.height() - 12, 1);
    EXPECT_NEAR(place("toast").center().x(), 190, 1);
    model->flash(QString(400, u'w'));
    settle();
    EXPECT_LE(place("toast").width(), 380) << "long ones are cut";
    EXPECT_GT(place("toast").top(), 0);
}

TEST_F(CardTest, TheWindowsButtonsAskTheWindow)
{
    const QSignalSpy closed(view.rootObject(), SIGNAL(closeRequested()));
    const QSignalSpy minimised(view.rootObject(), SIGNAL(minimiseRequested()));
    click("closeLight");
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(minimised.size(), 0);
    click("minimiseLight");
    EXPECT_EQ(minimised.size(), 1);
}

TEST_F(CardTest, ThePanelSetsAndSaves)
{
    model->setShowAdvanced(true);
    settle();
    click("fineTune");
    EXPECT_TRUE(item("fineTuneSteps"));
    click("master");
    EXPECT_TRUE(model->settings().blankRemovalEnabled);
    click("saveAsPreset");
    ASSERT_TRUE(waitUntil([&] { return focused() == u"presetName"; }));
    click("savePreset");
    EXPECT_EQ(model->presets().size(), 0) << "without a name";
    for (const Qt::Key key : {Qt::Key_O, Qt::Key_K})
        press(key);
    press(Qt::Key_Return);
    ASSERT_EQ(model->presets().size(), 1);
    EXPECT_TRUE(waitUntil([&] { return !item("presetName"); }));
    click("settingsButton");
    EXPECT_FALSE(item("advancedPanel"));
}

TEST_F(CardTest, ScreenReadersKnowTheCard)
{
    startEngine("");
    savePreset("Invoices");
    model->setShowAdvanced(true);
    click("chevron");
    // What a screen reader does when it starts.
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    const struct {
        const char *item, *name;
        QAccessible::Role role;
        bool selected, checked;
    } cases[] = {
        {"closeLight",     "Quit",                        QAccessible::Button,      false, false},
        {"minimiseLight",  "Minimise",                    QAccessible::Button,      false, false},
        {"tabDocument",    "Document",                    QAccessible::PageTab,     false, false},
        {"tabPreset",      "Invoices",                    QAccessible::PageTab,     true,  false},
        {"chevron",        "Choose a preset",             QAccessible::Button,      false, false},
        {"presetRow0",     "Invoices",                    QAccessible::RadioButton, false, true },
        {"scanButton",     "Scan",                        QAccessible::Button,      false, false},
        {"settingsButton", "Settings",                    QAccessible::Button,      false, true },
        {"scansButton",    "My scans",                    QAccessible::Button,      false, false},
        {"quality",        "Quality",                     QAccessible::Grouping,    false, false},
        {"master",         "Auto-enhance",                QAccessible::CheckBox,    false, false},
        {"fineTune",       "Fine-tune the enhance steps", QAccessible::Button,      false, false},
        {"saveAsPreset",   "Save as preset…",             QAccessible::Button,      false, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.item);
        QAccessibleInterface *shown = QAccessible::queryAccessibleInterface(item(c.item));
        ASSERT_TRUE(shown);
        EXPECT_EQ(shown->text(QAccessible::Name), QString::fromUtf8(c.name));
        EXPECT_EQ(shown->role(), c.role);
        EXPECT_EQ(bool(shown->state().selected), c.selected);
        EXPECT_EQ(bool(shown->state().checked), c.checked);
    }
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(false);
}

QStringList announcements;

TEST_F(CardTest, StatusAndToastsAreSpokenOnce)
{
    // What a screen reader does when it starts.
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    settle();
    announcements.clear();
    const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent *event) {
        if (event->type() == QAccessible::Alert)
            announcements.append(event->accessibleInterface()->text(QAccessible::Name));
    });
    receive({R"({"event":"scanStarted"})", R"({"event":"error","message":"Jam"})"});
    model->flash(u"Saved preset “A”"_qs);
    QAccessible::installUpdateHandler(before);
    announcements.removeAll(u"Looking for scanners…"_qs);
    announcements.removeAll(u"END"_qs);
    announcements.removeAll(u"Ready to scan"_qs);
    announcements.removeAll(u"No scanner found"_qs);
    EXPECT_THAT(announcements, ElementsAre(u"Scanning…", u"Jam", u"Saved preset “A”"));
}

} // namespace
} // namespace velmor
