#pragma once

#include "pipeline/recognition/InkMap.h"
#include "pipeline/recognition/PagePreparation.h"
#include "pipeline/recognition/WorkerPool.h"

#include <QDeadlineTimer>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace velmor {

/// A page's text, and how it was read.
struct Reading {
    TextAnswer text;
    QSize page;      ///< In pixels, that the text's boxes belong to.
    int degrees = 0; ///< That page is the image turned clockwise by this.
    QString language;
    double confidence = 0; ///< The words' mean, 0 to 100.
};

/// Readings with at least this confidence are taken to be in the right language and upright.
inline constexpr double goodConfidence = 80;

/// One try at one page: chooses its language and turn, and has the workers read it.
///
/// It begins with a language that is likely, and asks further only when the result looks wrong.
/// A worker that fails ends the try. One thread.
class ReadingTry {
public:
    /// How the workers share the page.
    enum class Sharing { halves, wholePage };

    /// What is known beforehand.
    struct Hints {
        QStringList installed; ///< Models, as the worker names them.
        QString usual;         ///< The likely language of any page, of `installed`.
        QString proven;        ///< That in which the page before was read well; empty if none was.
    };

    ReadingTry(WorkerPool &pool, Hints hints, Sharing sharing, QDeadlineTimer deadline);

    /// Nothing when a worker failed.
    [[nodiscard]] std::optional<Reading> read(const PreparedPage &page);

private:
    struct Sheet {
        PreparedPage page;
        int degrees = 0; ///< Turned clockwise by this from the image.
    };

    struct Choice {
        int degrees = 0; ///< As in Sheet.
        QString language;
    };

    Reading readWell(const Sheet &upright);
    Reading readSheet(const Sheet &sheet, const QString &language);
    void addPassedOver(Reading &reading, const PreparedPage &page);
    Reading inClearerLanguage(Reading reading, const Sheet &sheet);
    QString languageOfSample(const Sheet &sheet, const QString &language);
    Choice survey(const Sheet &upright, const QString &language);
    OrientationAnswer orientationOf(const Sheet &sheet);
    int turnBySamples(const Sheet &sheet, const QString &language);
    QString languageOf(const Sheet &sheet, const QStringList &candidates);
    QString bestBySample(const Sheet &sheet, const QStringList &languages);

    std::vector<TextAnswer> texts(const std::vector<RecognizerRequest> &requests);
    std::vector<RecognizerAnswer> answers(const std::vector<RecognizerRequest> &requests);

    WorkerPool &m_pool;
    Hints m_hints;
    Sharing m_sharing;
    QDeadlineTimer m_deadline;
    bool m_workerFailed = false; ///< Nothing more is asked then.
};

} // namespace velmor
