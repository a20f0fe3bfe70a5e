#include "pipeline/recognition/PageReader.h"

#include "pipeline/recognition/LanguageGuess.h"
#include "pipeline/recognition/LineAssembly.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>

namespace velmor {

namespace {

const QString english = QStringLiteral("eng");

/// After a change of language, so many pages in a row show that it was the only one. Until then
/// each page is sampled, which costs a tenth of reading it in a wrong language.
constexpr int mixedDocument = 10;

QString forUser(const char *sentence)
{
    return QCoreApplication::translate("TextRecognition", sentence);
}

/// The language to begin with: the desktop's, else English, else what there is.
QString likelyLanguage(const QStringList &languages)
{
    const QString local = languageForLocale(QLocale::system().name());
    for (const QString &language : {local, english}) {
        if (languages.contains(language))
            return language;
    }
    return languages.front();
}

} // namespace

PageReader::PageReader(Setup setup) : m_setup(std::move(setup)), m_pool(m_setup.workerProgram) {}

std::vector<OcrLine> PageReader::read(const QImage &image)
try {
    const auto page = preparePage(image);
    if (!page || isBlank(inkMap(page->pixels, page->dpi)))
        return {};
    const std::scoped_lock lock(m_mutex);
    if (knownProblem())
        return {};
    const auto reading = readTwice(*page);
    if (!reading)
        return {};
    if (reading->confidence >= goodConfidence)
        remember(reading->language);
    return assembleLines(reading->text, reading->page, reading->degrees);
} catch (const std::exception &) { // want of memory: the page has no text
    return {};
}

std::optional<QString> PageReader::problem()
{
    const std::scoped_lock lock(m_mutex);
    return knownProblem();
}

const std::optional<QString> &PageReader::knownProblem()
{
    if (!std::exchange(m_lookedForProblem, true))
        m_problem = lookForProblem();
    return m_problem;
}

std::optional<QString> PageReader::lookForProblem()
{
    if (!QFileInfo(m_setup.workerProgram).isExecutable())
        return forUser(QT_TRANSLATE_NOOP(
            "TextRecognition",
            "The text recognition program is missing; please reinstall the application."));
    const std::vector<RecognizerRequest> request{LanguagesRequest()};
    const auto answer = m_pool.ask(request, QDeadlineTimer(m_setup.tryLimit))[0];
    const auto *known = answer ? std::get_if<LanguagesAnswer>(&*answer) : nullptr;
    if (!known)
        return forUser(QT_TRANSLATE_NOOP(
            "TextRecognition", "The text recognition program doesn't start; please reinstall the "
                               "application."));
    if (readingLanguages(known->languages).isEmpty())
        return forUser(QT_TRANSLATE_NOOP(
            "TextRecognition",
            "No languages for text recognition are installed; install the package "
            "tesseract-ocr-eng or that of another language."));
    m_installed = known->languages;
    return std::nullopt;
}

std::optional<Reading> PageReader::readTwice(const PreparedPage &page)
{
    for (const auto sharing : {ReadingTry::Sharing::halves, ReadingTry::Sharing::wholePage}) {
        ReadingTry attempt(m_pool, hints(), sharing, QDeadlineTimer(m_setup.tryLimit));
        if (auto reading = attempt.read(page))
            return reading;
    }
    return std::nullopt;
}

void PageReader::remember(const QString &language)
{
    if (!m_provenLanguage.isEmpty() && language != m_provenLanguage)
        m_pagesToSample = mixedDocument;
    else if (m_pagesToSample > 0)
        --m_pagesToSample;
    m_provenLanguage = language;
}

ReadingTry::Hints PageReader::hints() const
{
    if (m_provenLanguage.isEmpty())
        return {.installed = m_installed,
                .usual = likelyLanguage(readingLanguages(m_installed)),
                .proven = {}};
    if (m_pagesToSample > 0)
        return {.installed = m_installed, .usual = m_provenLanguage, .proven = {}};
    return {.installed = m_installed,
            .usual = likelyLanguage(readingLanguages(m_installed)),
            .proven = m_provenLanguage};
}

} // namespace velmor
