// The calibration screen as the user sees and handles it.

#include "tests/ViewFixture.h"
#include "tests/calibration/CalibrationFixture.h"

#include <QFontMetricsF>

#include <cstdlib>
#include <cstring>

namespace velmor {
namespace {

using testing::ElementsAre;

class CalibrationViewTest : public ViewFixture<CalibrationFixture> {
protected:
    void open()
    {
        calibration = std::make_unique<Calibration>(*model);
        ASSERT_NO_FATAL_FAILURE(
            load(QStringLiteral("qrc:/qt/qml/Velmor/Calibration/CalibrationView.qml"),
                 {
                     {QStringLiteral("calibration"), QVariant::fromValue(calibration.get())}
        }));
        view.rootObject()->setFocus(true);
        ASSERT_NO_FATAL_FAILURE(show());
        calibration->open();
        settle();
    }

    static double lineHeight(int size)
    {
        QFont font = QGuiApplication::font();
        font.setPixelSize(size);
        return QFontMetricsF(font).height();
    }
};

TEST_F(CalibrationViewTest, StandsWhereItShould)
{
    putPage(QStringLiteral("1.png"), 100);
    model->saveCurrentAsPreset(QStringLiteral("Receipts"));
    model->saveCurrentAsPreset(QStringLiteral("Letters"));
    ASSERT_NO_FATAL_FAILURE(findScanner());
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_EQ(place("placeholder"), QRectF(22, place("sampleArea").top(), 576, 340));
    ASSERT_TRUE(resultBecomes(100));
    settle();
    const QRectF samples = place("sampleArea");
    const QRectF modes = place("colorMode");
    const QRectF brightness = place("brightness");
    const QRectF presets = place("presets");
    const struct {
        const char *what;
        double is, wanted;
    } cases[] = {
        {"width",                   double(view.width()),                                       620                    },
        {"title, left",             place("title").left(),                                      22                     },
        {"button, top",             place("done").top(),                                        22                     },
        {"button, right",           place("done").right(),                                      620 - 22               },
        {"button, height",          place("done").height(),                                     lineHeight(14) + 2 * 10},
        {"header to samples",       samples.top() - place("done").bottom(),                     16                     },
        {"samples, height",         samples.height(),                                           340                    },
        {"pane, width",             place("original").width(),                                  (576 - 12) / 2.0       },
        {"pane, height",            place("original").height(),                                 340                    },
        {"between panes",           place("result").left() - place("original").right(),         12                     },
        {"samples to modes",        modes.top() - samples.bottom(),                             16                     },
        {"modes, width",            modes.width(),                                              576                    },
        {"modes to brightness",     brightness.top() - modes.bottom(),                          16                     },
        {"brightness to contrast",  place("contrast").top() - brightness.bottom(),              16                     },
        {"slider after its label",  place("brightnessSlider").left() - brightness.left(),       78 + 10                },
        {"value after its slider",
         place("brightnessReadout").left() - place("brightnessSlider").right(),                 10                     },
        {"value, width",            place("brightnessReadout").width(),                         32                     },
        {"value, right",            place("brightnessReadout").right(),                         620 - 22               },
        {"contrast to actions",     place("savePreset").top() - place("contrast").bottom(),     16                     },
        {"name, width",             place("presetName").width(),                                150                    },
        {"name to its button",      place("savePreset").left() - place("presetName").right(),   10                     },
        {"actions to presets",      place("presetsLabel").top() - place("savePreset").bottom(), 16                     },
        {"presets under the label", presets.top() - place("presetsLabel").bottom(),             16                     },
        {"presets to the end",      view.height() - presets.bottom(),                           22                     },
    };
    for (const auto &c : cases)
        EXPECT_NEAR(c.is, c.wanted, 0.75) << c.what;
    EXPECT_FALSE(item("placeholder"));
    EXPECT_FALSE(item("resultSpinner"));
}

TEST_F(CalibrationViewTest, TheKeyboardReachesEverything)
{
    putPage(QStringLiteral("1.png"), 100);
    model->saveCurrentAsPreset(QStringLiteral("Receipts"));
    ASSERT_NO_FATAL_FAILURE(findScanner());
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(resultBecomes(100));
    EXPECT_EQ(focused(), u"brightnessSlider");
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_EQ(model->settings().brightness, 10);

    QStringList order;
    for (int i = 0; i < 8; ++i) {
        QTest::keyClick(&view, Qt::Key_Tab);
        order.append(focused());
    }
    // A segment of the colour modes and the button of a preset bear no names.
    EXPECT_THAT(order, ElementsAre(u"contrastSlider", u"autoTune", u"presetName", u"", u"done",
                                   u"scanAgain", u"", u"brightnessSlider"));
    model->setShowCalibration(true);
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_FALSE(model->showCalibration());
}

TEST_F(CalibrationViewTest, ASliderStoresAndShowsTenths)
{
    putPage(QStringLiteral("1.png"), 100);
    ASSERT_NO_FATAL_FAILURE(findScanner());
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(resultBecomes(100));
    click("brightnessSlider");
    EXPECT_NEAR(model->settings().brightness, 0, 5) << "clicked in the middle";
    calibration->setBrightness(-38.1);
    settle();
    EXPECT_EQ(item("brightnessReadout")->property("text").toString(), u"-38");
    EXPECT_NEAR(item("brightnessSlider")->property("value").toDouble(), -38.1, 1e-9);
    click("autoTune");
    ASSERT_TRUE(waitUntil([&] { return model->settings().contrast == 850; }));
    settle();
    EXPECT_EQ(item("contrastReadout")->property("text").toString(), u"85");
}

TEST_F(CalibrationViewTest, APreviewInBlackAndWhiteIsReducedToGreys)
{
    QImage lines(1000, 1000, QImage::Format_Mono);
    lines.fill(1);
    for (int y = 0; y < lines.height(); y += 2)
        std::memset(lines.scanLine(y), 0, size_t(lines.bytesPerLine()));
    QDir().mkpath(scansPath());
    const QString file = scansPath() + QStringLiteral("/.velmor_raw.png");
    ASSERT_TRUE(lines.save(file));
    startEngine("adjust: print {\"event\":\"adjusted\",\"file\":\"" + file.toUtf8() + "\"}\n");
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_TRUE(waitUntil([&] {
        const QImage shown = view.grabWindow();
        const double scale = double(shown.width()) / view.width();
        const QPointF middle = (place("result").center() + QPointF(0, 10)) * scale;
        return std::abs(shown.pixelColor(middle.toPoint()).lightness() - 128) < 30;
    }));
}

TEST_F(CalibrationViewTest, WithoutASampleThereIsNothingToTuneButAWayToScan)
{
    ASSERT_NO_FATAL_FAILURE(findScanner());
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(waitUntil([&] { return calibration->hasFailed(); }));
    settle();
    EXPECT_FALSE(item("autoTune")->isEnabled());
    EXPECT_FALSE(item("savePreset")->isEnabled());
    EXPECT_FALSE(item("original"));
    EXPECT_TRUE(item("note"));
    EXPECT_FALSE(item("presets"));
    putPage(QStringLiteral("1.png"), 100);
    click("scanNow");
    EXPECT_TRUE(originalBecomes(100));
    settle();
    EXPECT_TRUE(item("original"));

    click("presetName");
    for (const char key : {'P', 'a', 'l', 'e'})
        QTest::keyClick(&view, key);
    EXPECT_TRUE(item("savePreset")->isEnabled());
    QTest::keyClick(&view, Qt::Key_Return);
    settle();
    EXPECT_THAT(calibration->presetNames(), ElementsAre(u"Pale"));
    EXPECT_EQ(item("presetName")->property("text").toString(), QString());
    EXPECT_TRUE(item("presets"));
}

} // namespace
} // namespace velmor
