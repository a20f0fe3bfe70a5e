#include "tests/model/AppModelFixture.h"

namespace velmor {
namespace {

using testing::ElementsAre;

class AppModelPresetsTest : public AppModelFixture {
protected:
    QStringList names() const
    {
        QStringList names;
        for (const ScanPreset &preset : model->presets())
            names.append(preset.name);
        return names;
    }

    /// Puts `stored` where presets are kept, as an older version or a vandal might have, and
    /// restarts the model.
    void restartWith(const QByteArray &stored)
    {
        model.reset();
        QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Velmor"),
                  QStringLiteral("Velmor"))
            .setValue(QStringLiteral("customPresets"), stored);
        makeModel();
    }
};

constexpr const char *plainEntry =
    R"({"id":"6F9619FF-8B86-D011-B42D-00CF4FC964FF","name":"Plain","brightness":-50,)"
    R"("contrast":70,"colorMode":"bw","quality":600})";

TEST_F(AppModelPresetsTest, ASavedPresetSurvivesARestart)
{
    ScanSettings settings = model->settings();
    settings.brightness = 12;
    settings.quality = ScanQuality::low;
    settings.batch = false;
    model->setSettings(settings);
    model->saveCurrentAsPreset(QStringLiteral("\t Invoice \u00a0"));
    EXPECT_EQ(model->toast(), QStringLiteral("Saved preset “Invoice”"));
    const ScanPreset saved = model->activeCustomPreset().value();

    makeModel();
    EXPECT_EQ(model->presets(), QList<ScanPreset>({saved}));
    EXPECT_FALSE(model->activeCustomPreset());
    model->applyPreset(model->presets().first());
    EXPECT_EQ(model->settings().brightness, 12);
    EXPECT_EQ(model->settings().quality, ScanQuality::low);
    EXPECT_FALSE(model->settings().batch);
    EXPECT_TRUE(model->settings().cropEnabled);
}

TEST_F(AppModelPresetsTest, NamesAreUniqueAndNeverBlank)
{
    model->saveCurrentAsPreset(QStringLiteral("A"));
    const QUuid first = model->presets().first().id;
    model->saveCurrentAsPreset(QStringLiteral("b"));
    model->saveCurrentAsPreset(QStringLiteral("A "));
    model->saveCurrentAsPreset(QStringLiteral("a"));
    EXPECT_THAT(names(),
                ElementsAre(QStringLiteral("b"), QStringLiteral("A"), QStringLiteral("a")));
    EXPECT_NE(model->presets()[1].id, first);

    model->saveCurrentAsPreset(QStringLiteral(" \t "));
    EXPECT_EQ(model->presets().size(), 3);
}

TEST_F(AppModelPresetsTest, OddStoredDataChangesNoMoreThanItMust)
{
    const QByteArray plain = plainEntry;
    const struct {
        const char *what;
        QByteArray stored;
        qsizetype count;
    } cases[] = {
        {"older, without the optional keys", '[' + plain + ']', 1},
        {"unknown colour mode", '[' + QByteArray(plain).replace("bw", "sepia") + ']', 1},
        {"null is absent", '[' + QByteArray(plain).replace("}", ",\"ocr\":null,\"x\":1}") + ']', 1},
        {"one entry without brightness",
         '[' + plain + ',' + QByteArray(plain).replace("\"brightness\":-50,", "") + ']', 0},
        {"wrong type", '[' + QByteArray(plain).replace("70", "\"70\"") + ']', 0},
        {"bad bookmark", '[' + QByteArray(plain).replace("}", ",\"folderBookmark\":\"%\"}") + ']',
         0},
        {"no identifier", '[' + QByteArray(plain).replace("6F96", "zzzz") + ']', 0},
        {"no JSON", "\x01\x02[", 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        restartWith(c.stored);
        ASSERT_EQ(model->presets().size(), c.count);
        if (c.count == 0)
            continue;
        const ScanSettings before = model->settings();
        model->applyPreset(model->presets().first());
        EXPECT_EQ(model->settings().brightness, -50);
        EXPECT_EQ(model->settings().contrast, 70);
        EXPECT_EQ(model->settings().ocr, before.ocr);
        EXPECT_EQ(model->settings().batch, before.batch);
        EXPECT_EQ(model->settings().colorMode,
                  c.stored.contains("bw") ? ColorMode::bw : before.colorMode);
    }
    // What couldn't be read is overwritten by the next preset.
    model->saveCurrentAsPreset(QStringLiteral("New"));
    makeModel();
    EXPECT_EQ(names(), QStringList(QStringLiteral("New")));
}

TEST_F(AppModelPresetsTest, OnlyDeletingTheOneInForceBringsTheTabBack)
{
    model->saveCurrentAsPreset(QStringLiteral("other"));
    ScanSettings settings = model->settings();
    settings.contrast = 5;
    model->setSettings(settings);
    model->saveCurrentAsPreset(QStringLiteral("mine"));
    model->deletePreset(model->presets().first());
    EXPECT_EQ(model->settings().contrast, 5);
    EXPECT_TRUE(model->activeCustomPreset());
    model->deletePreset(model->presets().first());
    EXPECT_EQ(model->settings().contrast, 0);
    EXPECT_FALSE(model->activeCustomPreset());
    makeModel();
    EXPECT_TRUE(model->presets().isEmpty());
}

TEST_F(AppModelPresetsTest, APresetMayTakeItsFolderAlong)
{
    ASSERT_TRUE(QDir().mkpath(scansPath()));
    model->saveCurrentAsPreset(QStringLiteral("plain"));
    model->saveCurrentAsPreset(QStringLiteral("here"), AppModel::PresetFolder::include);
    const QUrl elsewhere = QUrl::fromLocalFile(folder.filePath(QStringLiteral("elsewhere")));
    model->setOutputFolder(elsewhere);
    model->applyPreset(model->presets()[0]);
    EXPECT_EQ(model->settings().outputFolder, elsewhere);
    model->applyPreset(model->presets()[1]);
    EXPECT_EQ(model->settings().outputFolder, QUrl::fromLocalFile(scansPath()));

    model->setOutputFolder(elsewhere);
    QDir(scansPath()).removeRecursively();
    model->applyPreset(model->presets()[1]);
    EXPECT_EQ(model->settings().outputFolder, elsewhere);
}

TEST_F(AppModelPresetsTest, PreviewsSayWhatATabWouldSet)
{
    ScanSettings settings = model->settings();
    settings.brightness = 7;
    settings.blankRemovalEnabled = true;
    model->setSettings(settings);
    EXPECT_EQ(model->previewSettings(QStringLiteral("Preset")), settings);
    EXPECT_EQ(model->previewSettings(QStringLiteral("Photo")).source, QStringLiteral("flatbed"));
    EXPECT_EQ(model->previewSettings(QStringLiteral("Photo")).brightness, 0);

    restartWith('[' + QByteArray(plainEntry) + ']');
    EXPECT_EQ(model->previewSettings(QStringLiteral("Preset")).brightness, -50);
}

TEST_F(AppModelPresetsTest, OnlyWhatTabsAndPresetsDecideCountsAsModified)
{
    model->selectPreset(DocumentType::document);
    const ScanSettings defaults = model->settings();
    ASSERT_FALSE(model->isModifiedFromDefaults());
    ScanSettings settings = defaults;
    settings.brightness = 3;
    settings.source = QStringLiteral("flatbed");
    settings.outputFolder = QUrl::fromLocalFile(folder.path());
    model->setSettings(settings);
    EXPECT_FALSE(model->isModifiedFromDefaults());

    settings.ocr = !settings.ocr;
    model->setSettings(settings);
    EXPECT_TRUE(model->isModifiedFromDefaults());
    model->saveCurrentAsPreset(QStringLiteral("as it is"));
    EXPECT_FALSE(model->isModifiedFromDefaults());
    settings.quality = ScanQuality::high;
    model->setSettings(settings);
    EXPECT_TRUE(model->isModifiedFromDefaults());
}

} // namespace
} // namespace velmor
