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

TEST(Models, ChoosingTabsLeavesQualityAndLanguageAlone)
{
    ScanSettings settings;
    settings.quality = ScanQuality::high;
    settings.ocrLanguage = QStringLiteral("deu");
    settings.brightness = 40;

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
    EXPECT_EQ(settings.quality, ScanQuality::high);
    EXPECT_EQ(settings.ocrLanguage, QStringLiteral("deu"));
}

TEST(Models, AResultIsNamedWithoutItsLastExtension)
{
    const QDateTime now = QDateTime::currentDateTime();
    const ScanResult result(QUrl::fromLocalFile(QStringLiteral("/a/Scan 1.final.pdf")), now);
    EXPECT_EQ(result.name(), QStringLiteral("Scan 1.final"));
    EXPECT_EQ(ScanResult(QUrl::fromLocalFile(QStringLiteral("/a/50% #1.pdf")), now).name(),
              QStringLiteral("50% #1"));
}

} // namespace
} // namespace velmor
