#include "browser/PDFThumbnail.h"

#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/pipeline/TestPages.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace velmor {
namespace {

/// Cells of a browser over a folder of its own, as QML makes them.
class PDFThumbnailTest : public testing::Test {
protected:
    PDFThumbnailTest()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
        ScanSettings settings = model.settings();
        settings.outputFolder = QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("scans")));
        model.setSettings(settings);
        QDir().mkpath(settings.outputFolder.toLocalFile());
        browser.setModel(&model);
    }

    /// A scan that is the newest one then.
    QUrl scan(const QString &name, int height)
    {
        const QDir folder(model.settings().outputFolder.toLocalFile());
        const QUrl url = QUrl::fromLocalFile(folder.filePath(name));
        EXPECT_TRUE(model.write(documentOf({height}), url));
        model.loadResults();
        return url;
    }

    std::unique_ptr<PDFThumbnail> cell(int place)
    {
        QQmlComponent component(&m_engine);
        component.setData("import Velmor.Browser\nPDFThumbnail {}", {});
        const QVariantMap given{
            {QStringLiteral("browser"), QVariant::fromValue(&browser)},
            {QStringLiteral("store"),   QVariant::fromValue(&store)  },
            {QStringLiteral("place"),   place                        }
        };
        std::unique_ptr<PDFThumbnail> cell(
            qobject_cast<PDFThumbnail *>(component.createWithInitialProperties(given)));
        EXPECT_TRUE(cell) << component.errorString().toStdString();
        return cell;
    }

    AppModel model;
    ScansBrowser browser;
    ThumbnailStore store;

private:
    QTemporaryDir m_folder;
    QQmlEngine m_engine{};
};

TEST_F(PDFThumbnailTest, ACellShowsWhatStandsAtItsPlace)
{
    const QUrl a = scan(QStringLiteral("a.pdf"), 150);
    const auto first = cell(0);
    const auto second = cell(1);
    EXPECT_FALSE(second->isThere());
    EXPECT_EQ(first->ratio(), 1.3) << "until there is a picture";
    const auto has = [](const std::unique_ptr<PDFThumbnail> &cell, double ratio) {
        return waitUntil([&] { return cell->hasImage() && qFuzzyCompare(cell->ratio(), ratio); });
    };
    EXPECT_TRUE(has(first, 1.5));
    scan(QStringLiteral("b.pdf"), 200);
    ASSERT_EQ(second->url(), a);
    EXPECT_TRUE(second->hasImage()) << "kept from where it stood before";
    EXPECT_TRUE(has(first, 2));

    browser.toggle(a, Qt::NoModifier);
    EXPECT_TRUE(second->isSelected());
    EXPECT_FALSE(first->isSelected());
    browser.rotate();
    EXPECT_TRUE(second->hasImage()) << "the old picture until the new one is there";
    EXPECT_TRUE(has(second, 2.0 / 3));
    browser.deleteSelected();
    EXPECT_FALSE(second->isThere());
    EXPECT_FALSE(second->hasImage());
}

TEST_F(PDFThumbnailTest, WhatCannotBeDrawnIsTriedOnce)
{
    const QUrl url = scan(QStringLiteral("a.pdf"), 150);
    writeFile(url.toLocalFile(), "no PDF");
    model.loadResults();
    const auto first = cell(0);
    const int revision = browser.rev(url);
    EXPECT_TRUE(waitUntil([&] { return store.kept(url, revision).has_value(); }));
    const int asked = store.asked();
    const auto again = cell(0);
    EXPECT_EQ(store.asked(), asked);
    EXPECT_FALSE(again->hasImage());
    scan(QStringLiteral("a.pdf"), 200);
    EXPECT_TRUE(waitUntil([&] { return again->hasImage(); })) << "another content";
}

TEST_F(PDFThumbnailTest, CellsComeAndGoWhilePicturesAreDrawn)
{
    for (int i = 0; i < 20; ++i)
        scan(QStringLiteral("%1.pdf").arg(i), 100 + i);
    for (int round = 0; round < 5; ++round) {
        std::vector<std::unique_ptr<PDFThumbnail>> cells;
        for (int place = 0; place < 20; ++place)
            cells.push_back(cell(place));
        browser.toggle(browser.urlAt(round), Qt::NoModifier);
        browser.rotate();
        EXPECT_TRUE(waitUntil([&] { return cells[size_t(round)]->hasImage(); }));
        browser.deleteSelected();
    }
    EXPECT_EQ(model.results().size(), 15);
}

} // namespace
} // namespace velmor
