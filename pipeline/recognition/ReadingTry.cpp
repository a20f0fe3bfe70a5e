#include "pipeline/recognition/ReadingTry.h"

#include "pipeline/recognition/LanguageGuess.h"
#include "pipeline/recognition/LineAssembly.h"
#include "pipeline/recognition/LineOrder.h"
#include "pipeline/recognition/PageSplit.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

/// Side of the sample that stands for a page, in inches: some 15 lines of 40 characters.
constexpr double sampleSide = 3.3;

/// The layout's own measure above which a turn is believed.
constexpr double sureTurn = 2;

/// A sample that reads worse than this in every turn is none of text: it tells nothing.
constexpr double leastSampleConfidence = 60;

/// A page of which no words cover this share of the strokes is looked at again.
constexpr double leastPassedOver = 0.1;

/// Scripts and turns are told apart at this resolution as well as at a higher one, and sooner.
constexpr double orientationDpi = 200;

PreparedPage sampleOf(const PreparedPage &page)
{
    const QRect square = busiestSquare(inkMap(page.pixels, page.dpi), sampleSide);
    return {page.pixels.copy(square), page.dpi};
}

GreyPixels greyPixels(const QImage &image)
{
    GreyPixels pixels{image.size(), {}};
    pixels.bytes.reserve(qsizetype{image.width()} * image.height());
    for (int y = 0; y < image.height(); ++y)
        pixels.bytes.append(reinterpret_cast<const char *>(image.constScanLine(y)), image.width());
    return pixels;
}

TextRequest textRequest(const QString &language, const PreparedPage &page)
{
    return {language, page.dpi, greyPixels(page.pixels)};
}

/// `second`'s lines after `first`'s; the parts begin at these places of the page.
TextAnswer joined(TextAnswer first, QPoint firstOrigin, TextAnswer second, QPoint secondOrigin)
{
    const auto move = [](TextAnswer &text, QPoint by) {
        for (RecognizedWords &words : text.lines) {
            for (RecognizedWord &word : words)
                word.box.translate(by);
        }
    };
    move(first, firstOrigin);
    move(second, secondOrigin);
    std::ranges::move(second.lines, std::back_inserter(first.lines));
    return first;
}

/// `page` with white where there are words.
PreparedPage withoutWords(const PreparedPage &page, const TextAnswer &text)
{
    PreparedPage rest{page.pixels.copy(), page.dpi};
    for (const RecognizedWords &words : text.lines) {
        for (const RecognizedWord &word : words) {
            const QRect around = word.box.adjusted(-inkCell, -inkCell, inkCell, inkCell);
            const QRect box = around & rest.pixels.rect();
            for (int y = box.top(); y <= box.bottom(); ++y)
                std::fill_n(rest.pixels.scanLine(y) + box.left(), box.width(), uchar{255});
        }
    }
    return rest;
}

bool overlaps(const RecognizedWords &line, const TextAnswer &text)
{
    const auto meets = [&](const RecognizedWord &word) {
        return std::ranges::any_of(
            line, [&](const RecognizedWord &other) { return word.box.intersects(other.box); });
    };
    return std::ranges::any_of(text.lines, [&](const RecognizedWords &words) {
        return std::ranges::any_of(words, meets);
    });
}

Reading better(Reading one, Reading other)
{
    return other.confidence > one.confidence ? other : one;
}

} // namespace

ReadingTry::ReadingTry(WorkerPool &pool, Hints hints, Sharing sharing, QDeadlineTimer deadline)
    : m_pool(pool), m_hints(std::move(hints)), m_sharing(sharing), m_deadline(deadline)
{
}

std::optional<Reading> ReadingTry::read(const PreparedPage &page)
{
    Reading reading = readWell({page, 0});
    if (m_workerFailed)
        return std::nullopt;
    return reading;
}

Reading ReadingTry::readWell(const Sheet &upright)
{
    QString language = m_hints.proven;
    std::optional<Reading> first;
    if (language.isEmpty())
        language = languageOfSample(upright, m_hints.usual);
    if (!language.isEmpty()) {
        first = readSheet(upright, language);
        if (first->confidence >= goodConfidence)
            return inClearerLanguage(std::move(*first), upright);
    }
    const Choice choice = survey(upright, language.isEmpty() ? m_hints.usual : language);
    if (first && choice.degrees == 0 && choice.language == language)
        return inClearerLanguage(std::move(*first), upright);
    const Sheet sheet{turned(upright.page, choice.degrees), choice.degrees};
    Reading second = inClearerLanguage(readSheet(sheet, choice.language), sheet);
    return first ? better(std::move(*first), std::move(second)) : second;
}

/// The language of an upright page's sample, read in `language` at first; empty when the sample
/// can't be read well. The workers share the sample, so that both have loaded the model after it.
QString ReadingTry::languageOfSample(const Sheet &sheet, const QString &language)
{
    const PreparedPage sample = sampleOf(sheet.page);
    const int width = sample.pixels.width();
    const int upper = sample.pixels.height() / 2;
    const int lower = sample.pixels.height() - upper;
    auto read =
        texts({textRequest(language, {sample.pixels.copy(0, 0, width, upper), sample.dpi}),
               textRequest(language, {sample.pixels.copy(0, upper, width, lower), sample.dpi})});
    const TextAnswer text = joined(std::move(read[0]), {}, std::move(read[1]), {0, upper});
    if (meanConfidence(text) < goodConfidence)
        return {};
    const auto guess = guessLanguage(wholeText(text), readingLanguages(m_hints.installed));
    return guess.value_or(language);
}

/// A page that reads well may still be in a language of the same script: umlauts get lost, and the
/// common words tell.
Reading ReadingTry::inClearerLanguage(Reading reading, const Sheet &sheet)
{
    const auto guess = guessLanguage(wholeText(reading.text), readingLanguages(m_hints.installed));
    if (!guess || *guess == reading.language)
        return reading;
    return better(std::move(reading), readSheet(sheet, *guess));
}

/// How a page that doesn't read well in `language` lies, and what to read it in.
ReadingTry::Choice ReadingTry::survey(const Sheet &upright, const QString &language)
{
    const OrientationAnswer orientation = orientationOf(upright);
    if (orientation.confidence < sureTurn)
        return {turnBySamples(upright, language), language};
    const int degrees = (360 - orientation.degrees) % 360;
    const QStringList candidates = languagesForScript(orientation.script, m_hints.installed);
    if (candidates.isEmpty())
        return {degrees, language};
    return {degrees, languageOf({turned(upright.page, degrees), degrees}, candidates)};
}

/// Which of `candidates`, the languages of its script, a page is in.
QString ReadingTry::languageOf(const Sheet &sheet, const QStringList &candidates)
{
    if (candidates.contains(m_hints.proven))
        return m_hints.proven;
    if (candidates.size() == 1)
        return candidates.front();
    const QString &likely = candidates.contains(m_hints.usual) ? m_hints.usual : candidates.front();
    if (!hasCommonWords(likely))
        return bestBySample(sheet, candidates);
    const QString found = languageOfSample(sheet, likely);
    return found.isEmpty() ? likely : found;
}

OrientationAnswer ReadingTry::orientationOf(const Sheet &sheet)
{
    if (!m_hints.installed.contains(QLatin1StringView("osd")))
        return {};
    PreparedPage page = sheet.page;
    if (page.dpi > orientationDpi) {
        const double factor = orientationDpi / page.dpi;
        page.pixels = page.pixels
                          .scaled(page.pixels.size() * factor, Qt::IgnoreAspectRatio,
                                  Qt::SmoothTransformation)
                          .convertToFormat(QImage::Format_Grayscale8);
        page.dpi = static_cast<int>(orientationDpi);
    }
    const auto answer = answers({
        OrientationRequest{page.dpi, greyPixels(page.pixels)}
    });
    const auto *orientation = std::get_if<OrientationAnswer>(&answer[0]);
    return orientation ? *orientation : OrientationAnswer();
}

/// The clockwise turn that makes a sample of the page read best.
int ReadingTry::turnBySamples(const Sheet &sheet, const QString &language)
{
    const PreparedPage sample = sampleOf(sheet.page);
    constexpr std::array turns{0, 180, 90, 270};
    int best = 0;
    double bestConfidence = 0;
    for (size_t i = 0; i < turns.size(); i += WorkerPool::workers) {
        const auto read = texts({textRequest(language, turned(sample, turns[i])),
                                 textRequest(language, turned(sample, turns[i + 1]))});
        for (size_t j = 0; j < read.size(); ++j) {
            const double confidence = meanConfidence(read[j]);
            if (confidence > bestConfidence) {
                bestConfidence = confidence;
                best = turns[i + j];
            }
        }
        if (bestConfidence >= goodConfidence)
            break;
    }
    return bestConfidence < leastSampleConfidence ? 0 : best;
}

QString ReadingTry::bestBySample(const Sheet &sheet, const QStringList &languages)
{
    const PreparedPage sample = sampleOf(sheet.page);
    QString best = languages.front();
    double bestConfidence = 0;
    for (qsizetype i = 0; i < languages.size(); i += WorkerPool::workers) {
        std::vector<RecognizerRequest> requests;
        for (const QString &language : languages.mid(i, WorkerPool::workers))
            requests.emplace_back(textRequest(language, sample));
        const auto read = texts(requests);
        for (size_t j = 0; j < read.size(); ++j) {
            const double confidence = meanConfidence(read[j]);
            if (confidence > bestConfidence) {
                bestConfidence = confidence;
                best = languages[i + static_cast<qsizetype>(j)];
            }
        }
    }
    return best;
}

Reading ReadingTry::readSheet(const Sheet &sheet, const QString &language)
{
    const PreparedPage &page = sheet.page;
    Reading reading{{}, page.pixels.size(), sheet.degrees, language, 0};
    const InkMap ink = inkMap(page.pixels, page.dpi);
    const auto halves = m_sharing == Sharing::halves ? splitPage(ink) : std::nullopt;
    if (halves) {
        const PagePart first = pagePart(page.pixels, ink, halves->first);
        const PagePart second = pagePart(page.pixels, ink, halves->second);
        auto read = texts({textRequest(language, {first.pixels, page.dpi}),
                           textRequest(language, {second.pixels, page.dpi})});
        reading.text = joined(std::move(read[0]), first.origin, std::move(read[1]), second.origin);
    } else {
        reading.text = texts({textRequest(language, page)})[0];
    }
    reading.confidence = meanConfidence(reading.text);
    if (reading.confidence >= goodConfidence)
        addPassedOver(reading, page);
    reading.text = inReadingOrder(reading.text, ink);
    return reading;
}

/// The layout analysis sometimes passes over a part of a page, and finds it when shown that alone.
void ReadingTry::addPassedOver(Reading &reading, const PreparedPage &page)
{
    const PreparedPage rest = withoutWords(page, reading.text);
    const int all = strokeEdges(inkMap(page.pixels, page.dpi));
    const int left = strokeEdges(inkMap(rest.pixels, rest.dpi));
    if (left < leastPassedOver * all)
        return;
    TextAnswer found = texts({textRequest(reading.language, rest)})[0];
    std::erase_if(found.lines,
                  [&](const RecognizedWords &words) { return overlaps(words, reading.text); });
    std::ranges::move(found.lines, std::back_inserter(reading.text.lines));
}

std::vector<TextAnswer> ReadingTry::texts(const std::vector<RecognizerRequest> &requests)
{
    std::vector<TextAnswer> found;
    for (RecognizerAnswer &answer : answers(requests)) {
        auto *text = std::get_if<TextAnswer>(&answer);
        found.push_back(text ? std::move(*text) : TextAnswer());
    }
    return found;
}

std::vector<RecognizerAnswer> ReadingTry::answers(const std::vector<RecognizerRequest> &requests)
{
    std::vector<RecognizerAnswer> found(requests.size());
    if (m_workerFailed)
        return found;
    auto given = m_pool.ask(requests, m_deadline);
    for (size_t i = 0; i < given.size(); ++i) {
        if (given[i])
            found[i] = std::move(*given[i]);
        else
            m_workerFailed = true;
    }
    return found;
}

} // namespace velmor
