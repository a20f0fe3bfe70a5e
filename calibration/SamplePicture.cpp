#include "calibration/SamplePicture.h"

#include <QFutureWatcher>
#include <QPainter>
#include <QQuickWindow>
#include <QtConcurrent>

namespace velmor {

SamplePicture::Reduced SamplePicture::reduced(const QImage &image, QSize size)
{
    // Black and white alone have nothing between them.
    const QImage levels =
        image.depth() == 1 ? image.convertToFormat(QImage::Format_Grayscale8) : image;
    return {image.cacheKey(), levels.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)};
}

SamplePicture::SamplePicture(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &SamplePicture::calibrationChanged, this, &SamplePicture::follow);
    connect(this, &SamplePicture::contentChanged, this, &SamplePicture::follow);
}

void SamplePicture::setCalibration(Calibration *calibration)
{
    if (calibration == m_calibration)
        return;
    if (m_calibration)
        m_calibration->disconnect(this);
    m_calibration = calibration;
    if (m_calibration) {
        connect(m_calibration, &Calibration::originalChanged, this, &SamplePicture::follow);
        connect(m_calibration, &Calibration::resultChanged, this, &SamplePicture::follow);
    }
    Q_EMIT calibrationChanged();
}

void SamplePicture::follow()
{
    QImage image;
    if (m_calibration)
        image =
            (m_content == Content::Original ? m_calibration->original() : m_calibration->result())
                .value_or(QImage());
    if (image.cacheKey() == m_image.cacheKey())
        return;
    m_image = image;
    if (m_image.isNull())
        take({});
    refresh();
}

QSize SamplePicture::wantedSize() const
{
    if (!window() || m_image.isNull() || size().isEmpty())
        return {};
    const QSizeF room = size() * window()->effectiveDevicePixelRatio();
    // A small image isn't enlarged here: painting it does that as well.
    const QSizeF fitted = QSizeF(m_image.size()).scaled(room, Qt::KeepAspectRatio);
    return fitted.toSize().boundedTo(m_image.size()).expandedTo(QSize(1, 1));
}

/// Reduces the image, one at a time: what has come meanwhile is next.
void SamplePicture::refresh()
{
    const QSize wanted = wantedSize();
    const bool isShown = m_shown.key == m_image.cacheKey() && m_shown.image.size() == wanted;
    if (m_isReducing || wanted.isEmpty() || isShown)
        return;
    m_isReducing = true;
    auto *watcher = new QFutureWatcher<Reduced>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        watcher->deleteLater();
        m_isReducing = false;
        if (!m_image.isNull())
            take(watcher->result());
        refresh();
    });
    watcher->setFuture(QtConcurrent::run(reduced, m_image, wanted));
}

void SamplePicture::take(const Reduced &reduced)
{
    m_shown = reduced;
    repaint();
}

void SamplePicture::paint(QPainter &painter, QSizeF size) const
{
    if (m_shown.image.isNull())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QSizeF fitted = QSizeF(m_shown.image.size()).scaled(size, Qt::KeepAspectRatio);
    QRectF place(QPointF(), fitted);
    place.moveCenter(QRectF(QPointF(), size).center());
    painter.drawImage(place, m_shown.image);
}

void SamplePicture::geometryChange(const QRectF &now, const QRectF &before)
{
    PictureItem::geometryChange(now, before);
    refresh();
}

void SamplePicture::itemChange(ItemChange change, const ItemChangeData &data)
{
    PictureItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        refresh();
}

} // namespace velmor
