#pragma once

#include "tests/escl/EsclRequest.h"

#include <QHash>
#include <QSize>
#include <QThread>

#include <atomic>
#include <mutex>

class QTcpSocket;

namespace scanengine {

/// What goes wrong, once, with a page of each job.
enum class EsclFault {
    none,
    busy,      ///< The first job is refused: another one is at work.
    jam,       ///< The page is stuck in the feeder.
    coverOpen, ///< The feeder's cover is opened before the page.
    drop,      ///< The connection is lost in the middle of the page.
    truncate,  ///< The page ends in its middle, as if that were its whole.
    hang,      ///< The page never comes.
};

/// What a test's scanner has and does.
struct EsclSetup {
    int sheets = 0; ///< In the feeder at first.
    bool hasFeeder = true;
    bool hasDuplex = true;
    EsclFault fault = EsclFault::none;
    int faultPage = 1; ///< The page of the job that goes wrong, from 1.
};

/// A network scanner that speaks eSCL at a port of its own on this computer: a flatbed of A4 and a
/// feeder, 75 to 600 dpi, JPEG.
///
/// Page n of all that it scans has words on a paper of one grey, `level(n)`, so that a test can
/// tell pages apart by the middle of the page. It serves on a thread of its own from its
/// construction to its end; every member may be called on any thread.
class EsclScanner {
public:
    explicit EsclScanner(const EsclSetup &setup);
    ~EsclScanner();
    EsclScanner(const EsclScanner &) = delete;
    EsclScanner &operator=(const EsclScanner &) = delete;

    /// "http://127.0.0.1:34567/eSCL"
    [[nodiscard]] QString url() const;

    void putSheets(int sheets);

    /// Pages that were sent whole.
    [[nodiscard]] int pagesSent() const;

    /// Jobs that were neither deleted nor run to their end.
    [[nodiscard]] int openJobs() const;

    /// The paper of page `number` from 1, from 0 for black to 255.
    [[nodiscard]] static int level(int number);

private:
    /// What a client asked for in its job.
    struct Job {
        QString source;
        bool isDuplex = false;
        bool isColor = true;
        int dpi = 300;
        QSize pixels;
        int pages = 0; ///< Taken so far.
    };

    void serve(QTcpSocket &socket, const EsclRequest &request);
    [[nodiscard]] EsclResponse answer(const EsclRequest &request);
    [[nodiscard]] EsclResponse startJob(const QByteArray &settings);
    [[nodiscard]] EsclResponse nextPage(const QString &jobName);
    [[nodiscard]] bool takePaper(const Job &job);
    [[nodiscard]] QByteArray status() const;

    const EsclSetup m_setup;
    mutable std::mutex m_mutex; ///< For all below.
    QHash<QString, Job> m_jobs;
    int m_sheets;
    int m_pagesSent = 0;
    int m_jobsStarted = 0;
    bool m_isTripped = false; ///< The fault has come.

    std::atomic<quint16> m_port = 0;
    QThread m_thread;
};

} // namespace scanengine
