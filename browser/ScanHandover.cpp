#include "browser/ScanHandover.h"

#include "controls/SessionBus.h"

#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QDrag>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QQuickWindow>

namespace velmor {

namespace {

/// How long the file manager has to answer, in milliseconds; it may have to be started.
constexpr int answerTime = 10'000;

/// The longer side of the picture that is dragged, in logical pixels.
constexpr int dragSize = 110;

/// A page with a thin outline, and how many there are if there are several.
QPixmap dragPicture(const QImage &page, qsizetype count, qreal detail)
{
    const QSize shown = page.isNull() ? QSize(85, dragSize)
                                      : page.size().scaled(dragSize, dragSize, Qt::KeepAspectRatio);
    QPixmap picture(shown * detail);
    picture.fill(Qt::white);
    if (!page.isNull())
        picture = QPixmap::fromImage(
            page.scaled(shown * detail, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(detail);
    QPainter painter(&picture);
    painter.setPen(QColor(0, 0, 0, 60));
    painter.drawRect(QRectF(QPointF(), shown).adjusted(0.5, 0.5, -0.5, -0.5));
    if (count < 2)
        return picture;
    painter.setRenderHint(QPainter::Antialiasing);
    const QString number = QLocale().toString(count);
    QFont font;
    font.setPixelSize(12);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    const int height = 20;
    const int width = std::max(height, painter.fontMetrics().horizontalAdvance(number) + 12);
    const QRect badge(shown.width() - width - 4, 4, width, height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(QRgb(0x7A5AF8)));
    painter.drawRoundedRect(badge, height / 2.0, height / 2.0);
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, number);
    return picture;
}

} // namespace

std::unique_ptr<QMimeData> filesToCopy(const QList<QUrl> &files)
{
    auto data = std::make_unique<QMimeData>();
    data->setUrls(files);
    // As some file managers want to be told what to do with them.
    QByteArray copy = "copy";
    for (const QUrl &file : files)
        copy += '\n' + file.toEncoded();
    data->setData(QStringLiteral("x-special/gnome-copied-files"), copy);
    return data;
}

void ScanHandover::open(const QUrl &scan)
{
    if (!m_browser || scan.isEmpty())
        return;
    for (const QUrl &file : m_browser->filesAt(scan)) {
        if (!QFileInfo::exists(file.toLocalFile()) || !QDesktopServices::openUrl(file))
            m_browser->tell(tr("Couldn't open %1").arg(file.fileName()));
    }
}

void ScanHandover::showInFolder(const QUrl &scan)
{
    if (!m_browser || scan.isEmpty())
        return;
    if (!hasSessionBus()) {
        openFolder(scan);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QUrl::toStringList(m_browser->filesAt(scan), QUrl::FullyEncoded) << QString();
    auto *answer = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, answerTime), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, scan] {
        answer->deleteLater();
        if (answer->isError())
            openFolder(scan);
    });
}

void ScanHandover::openFolder(const QUrl &scan)
{
    const QString folder = QFileInfo(scan.toLocalFile()).path();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)) && m_browser)
        m_browser->tell(tr("Couldn't open %1").arg(folder));
}

void ScanHandover::copy(const QUrl &scan)
{
    if (!m_browser || scan.isEmpty())
        return;
    const QList<QUrl> files = m_browser->filesAt(scan);
    QGuiApplication::clipboard()->setMimeData(filesToCopy(files).release());
    const auto count = static_cast<int>(files.size());
    m_browser->tell(count == 1 ? tr("Copied 1 scan") : tr("Copied %n scans", nullptr, count));
}

void ScanHandover::drag(PDFThumbnail *cell)
{
    if (!m_browser || !cell || !cell->isThere() || m_isDragging)
        return;
    QQuickWindow *window = cell->window();
    const QList<QUrl> files = m_browser->filesAt(cell->url());
    // Of the window, as the cell may go while the drag lasts.
    auto *drag = new QDrag(window);
    drag->setMimeData(filesToCopy(files).release());
    drag->setPixmap(
        dragPicture(cell->picture(), files.size(), window->effectiveDevicePixelRatio()));
    drag->setHotSpot({12, 12});
    // The release of the button goes to the drag.
    if (QQuickItem *grabber = window->mouseGrabberItem())
        grabber->ungrabMouse();
    m_isDragging = true;
    Q_EMIT draggingChanged();
    const QPointer<ScanHandover> self(this);
    drag->exec(Qt::CopyAction);
    if (!self)
        return;
    m_isDragging = false;
    Q_EMIT draggingChanged();
}

} // namespace velmor
