#include "preview/TextMatches.h"
#include "preview/TextSearch.h"
#include "preview/TextSelection.h"
#include "tests/Printers.h"
#include "tests/Waiting.h"
#include "tests/preview/PreviewDocuments.h"

#include <gmock/gmock.h>

namespace velmor {
namespace {

TEST(TextMatches, ReadLikeTheQuery)
{
    const struct {
        QString text, query;
        QList<TextRange> matches;
    } cases[] = {
        {u"one two one"_qs,          u"one"_qs,           {{0, 3}, {8, 3}} },
        {u"ÄRGER und ärger"_qs,      u"Ärger"_qs,         {{0, 5}, {10, 5}}},
        {u"pump \r\nhouse"_qs,       u"pump house"_qs,    {{0, 12}}        },
        {u"pump  house"_qs,          u" pump\thouse "_qs, {{0, 11}}        },
        {u"water\u0002\r\nmelon"_qs, u"watermelon"_qs,    {{0, 13}}        },
        {u"wa\u00ADter"_qs,          u"water"_qs,         {{0, 6}}         },
        {u"aaaa"_qs,                 u"aa"_qs,            {{0, 2}, {2, 2}} },
        {u"text"_qs,                 u"  "_qs,            {}               },
        {u""_qs,                     u"a"_qs,             {}               },
        {u"short"_qs,                u"shorter"_qs,       {}               },
    };
    for (const auto &c : cases) {
        EXPECT_EQ(textMatches(c.text, c.query), c.matches)
            << c.text.toStdString() << " for " << c.query.toStdString();
    }
}

/// What is copied of a selection.
QString copyOf(TextSelection &selection)
{
    std::optional<QString> text;
    const auto connection = QObject::connect(&selection, &TextSelection::copied, &selection,
                                             [&](const QString &copied) { text = copied; });
    selection.copy();
    EXPECT_TRUE(waitUntil([&] { return text.has_value(); }));
    QObject::disconnect(connection);
    return text.value_or(QString());
}

/// Waits for what is marked of a page.
QRectF markedOn(TextSelection &selection, int page)
{
    EXPECT_TRUE(waitUntil([&] { return !selection.boxes(page).isEmpty(); }));
    QRectF all;
    for (const QRectF &box : selection.boxes(page))
        all |= box;
    return all;
}

/// Beside the middle of a line, as `documentWith` sets them: before its first letter or behind its
/// last.
PagePlace before(int page, int line)
{
    return {
        page, {2, 37.5 + 30 * line}
    };
}
PagePlace behind(int page, int line)
{
    return {
        page, {198, 37.5 + 30 * line}
    };
}

TEST(TextSelection, ReachesFromPlaceToPlaceInReadingOrder)
{
    const auto document = previewOf({
        {u"first line"_qs, u"second line"_qs},
        {},
        {u"last page"_qs}
    });
    const struct {
        const char *what;
        PagePlace from, to;
        QString text;
        QList<int> marked;
    } cases[] = {
        {"one line", before(0, 1), behind(0, 1), u"second line"_qs, {0}},
        {"two lines", before(0, 0), behind(0, 1), u"first line\nsecond line"_qs, {0}},
        {"backwards", behind(0, 1), before(0, 1), u"second line"_qs, {0}},
        {"across pages", behind(2, 0), before(0, 1), u"second line\n\nlast page"_qs, {0, 2}},
        {"from an empty page", {1, {50, 50}}, behind(2, 0), u"\nlast page"_qs, {2}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        TextSelection selection;
        selection.setDocument(document);
        selection.start(c.from);
        selection.extend(c.to);
        ASSERT_TRUE(waitUntil([&] { return !selection.isEmpty(); }));
        EXPECT_EQ(copyOf(selection), c.text);
        for (const int page : c.marked)
            EXPECT_TRUE(QRectF(10, 25, 180, 50).contains(markedOn(selection, page).center()));
        selection.clear();
        EXPECT_TRUE(selection.isEmpty());
        EXPECT_TRUE(selection.boxes(0).isEmpty());
    }
}

TEST(TextSelection, TakesWordsAndAll)
{
    TextSelection selection;
    selection.setDocument(previewOf({{u"one longword two"_qs}, {u"three"_qs}}));
    selection.selectWord({
        0, {90, 37}
    });
    ASSERT_TRUE(waitUntil([&] { return !selection.isEmpty(); }));
    EXPECT_EQ(copyOf(selection), u"longword"_qs);
    selection.selectAll();
    EXPECT_EQ(copyOf(selection), u"one longword two\nthree"_qs);
    EXPECT_TRUE(markedOn(selection, 1).isValid());
    selection.setDocument(nullptr);
    EXPECT_TRUE(selection.isEmpty());
}

/// A search, and the pages to which it led.
struct Search {
    explicit Search(const QList<QStringList> &pages, int shown = 0)
    {
        QObject::connect(&search, &TextSearch::currentFound, &search,
                         [this](int page, const QRectF &box) {
                             led.append(page);
                             lastBox = box;
                         });
        search.setDocument(previewOf(pages));
        search.setShownPage(shown);
    }

    [[nodiscard]] bool finds(const QString &text)
    {
        search.setText(text);
        return waitUntil(
            [this] { return !search.isSearching() && (search.count() == 0 || !led.isEmpty()); });
    }

    TextSearch search;
    QList<int> led;
    QRectF lastBox;
};

TEST(TextSearch, CountsAllPlacesAndGoesRound)
{
    Search found({{u"red fish, blue fish"_qs}, {u"none"_qs}, {u"Fish"_qs}});
    ASSERT_TRUE(found.finds(u"fish"_qs));
    EXPECT_EQ(found.search.count(), 3);
    EXPECT_EQ(found.search.current(), 1);
    const auto goes = [&](void (TextSearch::*step)(), int to) {
        (found.search.*step)();
        EXPECT_EQ(found.search.current(), to);
    };
    goes(&TextSearch::next, 2);
    goes(&TextSearch::next, 3);
    ASSERT_TRUE(waitUntil([&] { return found.led.contains(2); }));
    EXPECT_NEAR(found.lastBox.center().y(), 37.5, 5);
    goes(&TextSearch::next, 1);
    goes(&TextSearch::previous, 3);
    goes(&TextSearch::previous, 2);
    EXPECT_EQ(found.search.boxes(0).current.size(), 1);
    EXPECT_EQ(found.search.boxes(0).others.size(), 1);
    EXPECT_TRUE(found.search.boxes(1).others.isEmpty());
}

TEST(TextSearch, BeginsAtThePageThatIsShown)
{
    Search found({{u"fish"_qs}, {}, {u"fish"_qs}, {u"fish"_qs}}, 1);
    ASSERT_TRUE(found.finds(u"fish"_qs));
    EXPECT_EQ(found.search.count(), 3);
    EXPECT_EQ(found.search.current(), 2);
    EXPECT_EQ(found.led.first(), 2);
}

TEST(TextSearch, WithoutAMatchThereIsNoCurrentPlace)
{
    Search found({{u"fish"_qs}});
    ASSERT_TRUE(found.finds(u"bird"_qs));
    found.search.next();
    found.search.previous();
    EXPECT_EQ(found.search.current(), 0);
    found.search.setText(QString());
    EXPECT_FALSE(found.search.isSearching());
    found.search.setText(u"fish"_qs);
    found.search.setDocument(nullptr);
    EXPECT_FALSE(found.search.isSearching());
    EXPECT_EQ(found.search.count(), 0);
}

} // namespace
} // namespace velmor
