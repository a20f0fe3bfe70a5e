#include "tests/escl/EsclScanner.h"

#include "tests/escl/EsclDocuments.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>
#include <utility>

namespace scanengine {
namespace {

enum HttpStatus { ok = 200, created = 201, notFound = 404, conflict = 409, unavailable = 503 };

const QString jobsPath = QStringLiteral("/eSCL/ScanJobs");
const QString platen = QStringLiteral("Platen");

/// Rows of words in the upper third of the page, in black: no page is blank.
void drawWords(QImage &page)
{
    constexpr int rows = 12;
    constexpr int words = 8;
    QPainter painter(&page);
    const int rowHeight = page.height() / 3 / (rows + 2);
    const int wordWidth = page.width() / (words + 2);
    for (int row = 1; row <= rows; ++row) {
        for (int word = 1; word <= words; ++word)
            painter.fillRect(word * wordWidth, row * rowHeight, wordWidth * 3 / 4, rowHeight / 3,
                             Qt::black);
    }
}

QByteArray jpegPage(QSize pixels, int level, int dpi, QImage::Format format)
{
    QImage page(pixels, QImage::Format_RGB32);
    page.fill(QColor(level, level, level));
    drawWords(page);
    page.setDotsPerMeterX(qRound(dpi / 0.0254));
    page.setDotsPerMeterY(page.dotsPerMeterX());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    page.convertToFormat(format).save(&buffer, "jpeg");
    return bytes;
}

EsclResponse statusOnly(HttpStatus status)
{
    EsclResponse response;
    response.status = status;
    return response;
}

EsclResponse document(const QByteArray &xml)
{
    EsclResponse response;
    response.body = xml;
    return response;
}

} // namespace

EsclScanner::EsclScanner(const EsclSetup &setup) : m_setup(setup), m_sheets(setup.sheets)
{
    auto *server = new QTcpServer;
    server->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, server, &QObject::deleteLater);
    QSemaphore isListening;
    QObject::connect(&m_thread, &QThread::started, server, [this, server, &isListening] {
        server->listen(QHostAddress::LocalHost);
        m_port = server->serverPort();
        isListening.release();
    });
    QObject::connect(server, &QTcpServer::newConnection, server, [this, server] {
        QTcpSocket *socket = server->nextPendingConnection();
        auto received = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, received] {
            *received += socket->readAll();
            if (const auto request = parseRequest(*received)) {
                received->clear();
                serve(*socket, *request);
            }
        });
    });
    m_thread.start();
    isListening.acquire();
}

EsclScanner::~EsclScanner()
{
    m_thread.quit();
    m_thread.wait();
}

QString EsclScanner::url() const
{
    return QStringLiteral("http://127.0.0.1:%1/eSCL").arg(m_port);
}

void EsclScanner::putSheets(int sheets)
{
    const std::lock_guard lock(m_mutex);
    m_sheets += sheets;
}

int EsclScanner::pagesSent() const
{
    const std::lock_guard lock(m_mutex);
    return m_pagesSent;
}

int EsclScanner::openJobs() const
{
    const std::lock_guard lock(m_mutex);
    return int(m_jobs.size());
}

int EsclScanner::level(int number)
{
    constexpr int first = 135;
    constexpr int step = 15;
    constexpr int levels = 8;
    return first + step * ((number - 1) % levels);
}

void EsclScanner::serve(QTcpSocket &socket, const EsclRequest &request)
{
    const EsclResponse response = answer(request);
    if (response.delivery == Delivery::never)
        return;
    socket.write(encoded(response));
    socket.disconnectFromHost();
}

EsclResponse EsclScanner::answer(const EsclRequest &request)
{
    const std::lock_guard lock(m_mutex);
    if (request.path == u"/eSCL/ScannerCapabilities")
        return document(capabilitiesDocument(m_setup));
    if (request.path == u"/eSCL/ScannerStatus")
        return document(status());
    if (request.method == "POST" && request.path == jobsPath)
        return startJob(request.body);
    const QString jobName = request.path.section(u'/', 3, 3);
    if (!m_jobs.contains(jobName))
        return statusOnly(notFound);
    if (request.method == "DELETE") {
        m_jobs.remove(jobName);
        return statusOnly(ok);
    }
    return request.path.endsWith(u"/NextDocument") ? nextPage(jobName) : statusOnly(notFound);
}

EsclResponse EsclScanner::startJob(const QByteArray &settings)
{
    if (m_setup.fault == EsclFault::busy && !std::exchange(m_isTripped, true))
        return statusOnly(unavailable);
    Job job;
    job.source = elementText(settings, "InputSource");
    job.isDuplex = elementText(settings, "Duplex") == u"true";
    job.isColor = elementText(settings, "ColorMode") == u"RGB24";
    job.dpi = elementText(settings, "XResolution").toInt();
    constexpr int unitsPerInch = 300;
    job.pixels = QSize(elementText(settings, "Width").toInt() * job.dpi / unitsPerInch,
                       elementText(settings, "Height").toInt() * job.dpi / unitsPerInch);
    if (job.source != platen && m_sheets == 0)
        return statusOnly(conflict);
    const QString name = QStringLiteral("job%1").arg(++m_jobsStarted);
    m_jobs.insert(name, job);
    EsclResponse response;
    response.status = created;
    response.location = (url().chopped(5) + jobsPath + u'/' + name).toLatin1();
    return response;
}

EsclResponse EsclScanner::nextPage(const QString &jobName)
{
    Job &job = m_jobs[jobName];
    const bool isFaulty = m_setup.fault != EsclFault::none && job.pages + 1 == m_setup.faultPage;
    if (isFaulty && (m_setup.fault == EsclFault::jam || m_setup.fault == EsclFault::coverOpen)) {
        m_isTripped = true;
        return statusOnly(conflict);
    }
    if (!takePaper(job)) {
        m_jobs.remove(jobName);
        return statusOnly(notFound);
    }
    ++job.pages;
    EsclResponse response;
    response.type = QByteArrayLiteral("image/jpeg");
    response.body = jpegPage(job.pixels, level(m_pagesSent + 1), job.dpi,
                             job.isColor ? QImage::Format_RGB32 : QImage::Format_Grayscale8);
    if (isFaulty && m_setup.fault == EsclFault::drop)
        response.delivery = Delivery::cutOff;
    if (isFaulty && m_setup.fault == EsclFault::truncate)
        response.delivery = Delivery::truncated;
    if (isFaulty && m_setup.fault == EsclFault::hang)
        response.delivery = Delivery::never;
    if (response.delivery == Delivery::whole)
        ++m_pagesSent;
    return response;
}

/// The front of the next sheet, or the back of the one before; from the flatbed one page a job.
bool EsclScanner::takePaper(const Job &job)
{
    if (job.source == platen)
        return job.pages == 0;
    const bool isBack = job.isDuplex && job.pages % 2 == 1;
    if (isBack)
        return true;
    if (m_sheets == 0)
        return false;
    --m_sheets;
    return true;
}

QByteArray EsclScanner::status() const
{
    QByteArray feeder = m_sheets > 0 ? "ScannerAdfLoaded" : "ScannerAdfEmpty";
    const bool isBusy = m_setup.fault == EsclFault::busy;
    if (m_isTripped && !isBusy)
        feeder = m_setup.fault == EsclFault::jam ? "ScannerAdfJam" : "ScannerAdfDoorOpen";
    return statusDocument(isBusy && !m_isTripped ? "Processing" : "Idle",
                          m_setup.hasFeeder ? feeder : QByteArray());
}

} // namespace scanengine
