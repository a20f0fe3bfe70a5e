#pragma once

#include "pipeline/OcrLine.h"
#include "pipeline/recognition/ReadingTry.h"
#include "pipeline/recognition/WorkerPool.h"

#include <QImage>

#include <chrono>
#include <mutex>
#include <optional>
#include <vector>

namespace velmor {

/// Reads pages with a pool of workers, and tries again where one of them failed.
///
/// Pages tend to be alike: the language of the last page that was read well is remembered for the
/// next. Safe on several threads, which take turns.
class PageReader {
public:
    struct Setup {
        QString workerProgram;                       ///< Path.
        std::chrono::milliseconds tryLimit{120'000}; ///< For one try at a page.
    };

    explicit PageReader(Setup setup);

    /// As recognizeText().
    [[nodiscard]] std::vector<OcrLine> read(const QImage &image);

    /// As recognitionProblem().
    [[nodiscard]] std::optional<QString> problem();

private:
    /// What keeps pages from being read, looked up at first use.
    const std::optional<QString> &knownProblem();
    std::optional<QString> lookForProblem();
    std::optional<Reading> readTwice(const PreparedPage &page);
    [[nodiscard]] ReadingTry::Hints hints() const;
    void remember(const QString &language);

    const Setup m_setup;
    std::mutex m_mutex; ///< Guards all below.
    WorkerPool m_pool;
    bool m_lookedForProblem = false;
    std::optional<QString> m_problem;
    QStringList m_installed;  ///< Models; empty before the look for a problem.
    QString m_provenLanguage; ///< Empty before the first page that was read well.
    int m_pagesToSample = 0;  ///< As the language changed lately.
};

} // namespace velmor
