#include "model/Models.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

TEST(Models, EngineWordsAndStoredWordsAreKeptApart)
{
    EXPECT_EQ(colorModeFromRawValue(QStringLiteral("grayscale")), ColorMode::grayscale);
    EXPECT_EQ(engineValue(ColorMode::grayscale), QStringLiteral("gray"));
    EXPECT_EQ(colorModeFromRawValue(QStringLiteral("gray")), std::nullopt);
    EXPECT_EQ(colorModeFromRawValue(QStringLiteral("Auto")), std::nullopt);
    for (const ColorMode mode : allColorModes)
        EXPECT_EQ(colorModeFromRawValue(rawValue(mode)), mode);
}

TEST(Models, OnlyTheThreeResolutionsAreQualities)
{
    for (const int dpi : {150, 300, 600})
        EXPECT_EQ(rawValue(scanQualityFromRawValue(dpi).value()), dpi);
    for (const int dpi : {0, 200, 1200, -150})
        EXPECT_EQ(scanQualityFromRawValue(dpi), std::nullopt);
}

TEST(Models, ChoosingTabsLeavesQualityLanguageAndFolderAlone)
{
    ScanSettings settings;
    EXPECT_TRUE(settings.blankRemovalEnabled);
    settings.quality = ScanQuality::high;
    settings.ocrLanguage = QStringLiteral("deu");
    settings.outputFolder = QUrl(QStringLiteral("file:///somewhere"));
    settings.brightness = 40;
    settings.contrast = -70;

    applyDefaults(DocumentType::document, settings);
    const ScanSettings first = settings;
    applyDefaults(DocumentType::photo, settings);
    EXPECT_EQ(settings.source, QStringLiteral("flatbed"));
    EXPECT_EQ(settings.colorMode, ColorMode::color);
    EXPECT_TRUE(settings.cropEnabled);
    EXPECT_FALSE(settings.deskewEnabled || settings.cleanEnabled || settings.autoLevelsEnabled ||
                 settings.ocr || settings.batch || settings.blankRemovalEnabled);
    applyDefaults(DocumentType::document, settings);

    EXPECT_EQ(settings, first);
    EXPECT_FALSE(settings.blankRemovalEnabled);
    EXPECT_EQ(settings.brightness, 0);
    EXPECT_EQ(settings.contrast, 0);
    EXPECT_EQ(settings.quality, ScanQuality::high);
    EXPECT_EQ(settings.ocrLanguage, QStringLiteral("deu"));
    EXPECT_EQ(settings.outputFolder, QUrl(QStringLiteral("file:///somewhere")));
}

TEST(Models, AResultIsNamedWithoutItsLastExtension)
{
    const QDateTime now = QDateTime::currentDateTime();
    const ScanResult result(QUrl::fromLocalFile(QStringLiteral("/a/Scan 1.final.pdf")), now);
    EXPECT_EQ(result.name(), QStringLiteral("Scan 1.final"));
    EXPECT_EQ(ScanResult(QUrl::fromLocalFile(QStringLiteral("/a/50% #1.pdf")), now).name(),
              QStringLiteral("50% #1"));
}

TEST(Models, TwoRecordsOfOneFileAreUnequal)
{
    const QDateTime now = QDateTime::currentDateTime();
    const QUrl url = QUrl::fromLocalFile(QStringLiteral("/a/b.pdf"));
    const ScanResult first(url, now);
    const ScanResult second(url, now);
    EXPECT_FALSE(first == second);
    EXPECT_EQ(first, ScanResult(first));
}

} // namespace
} // namespace velmor
