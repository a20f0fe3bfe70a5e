#include "browser/PDFThumbnail.h"

#include "preview/Background.h"

#include <QPainter>
#include <QPainterPath>

namespace velmor {

namespace {

constexpr qreal cornerRadius = 10;

} // namespace

PDFThumbnail::PDFThumbnail(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &PDFThumbnail::placed, this, &PDFThumbnail::refresh);
}

PDFThumbnail::~PDFThumbnail()
{
    drop();
}

void PDFThumbnail::setBrowser(ScansBrowser *browser)
{
    if (browser == m_browser)
        return;
    if (m_browser)
        m_browser->disconnect(this);
    m_browser = browser;
    if (m_browser) {
        connect(m_browser, &ScansBrowser::resultsChanged, this, &PDFThumbnail::refresh);
        connect(m_browser, &ScansBrowser::selectionChanged, this, &PDFThumbnail::refresh);
        connect(m_browser, &ScansBrowser::revChanged, this, &PDFThumbnail::refresh);
    }
    Q_EMIT placed();
}

QString PDFThumbnail::name() const
{
    return m_url.fileName();
}

void PDFThumbnail::componentComplete()
{
    PictureItem::componentComplete();
    refresh();
}

void PDFThumbnail::refresh()
{
    if (!isComponentComplete() || !m_browser || !m_store)
        return;
    const QUrl url = m_browser->urlAt(m_place);
    const int revision = m_browser->rev(url);
    const bool isSelected = m_browser->selection().contains(url);
    const bool isOther = url != m_url;
    if (isOther || revision != m_revision)
        m_isLoaded = false;
    // Another file's picture would be a wrong one, an older one of the same file isn't.
    if (isOther && hasImage())
        show({});
    const bool hasChanged = isOther || isSelected != m_selected;
    m_url = url;
    m_revision = revision;
    m_selected = isSelected;
    if (hasChanged)
        Q_EMIT changed();
    if (!m_isLoaded)
        load();
}

void PDFThumbnail::load()
{
    drop();
    m_isLoaded = true;
    if (m_url.isEmpty())
        return;
    if (const std::optional<Thumbnail> kept = m_store->kept(m_url, m_revision)) {
        show(*kept);
        return;
    }
    m_dropped = std::make_shared<std::atomic_bool>(false);
    const auto receive = [this, dropped = m_dropped, url = m_url,
                          revision = m_revision](const std::optional<Thumbnail> &thumbnail) {
        if (!thumbnail)
            return;
        if (m_store)
            m_store->keep(url, revision, *thumbnail);
        if (!*dropped)
            show(*thumbnail);
    };
    whenAnswered(this, m_store->draw(m_url, m_browser->thumbSize(), m_dropped), receive);
}

/// What comes for another file or an older content isn't shown.
void PDFThumbnail::drop()
{
    if (m_dropped)
        *m_dropped = true;
    m_dropped.reset();
}

void PDFThumbnail::show(const Thumbnail &thumbnail)
{
    m_thumbnail = thumbnail;
    repaint();
    Q_EMIT imageChanged();
}

void PDFThumbnail::paint(QPainter &painter, QSizeF size) const
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    const QRectF cell(QPointF(), size);
    painter.drawRoundedRect(cell, cornerRadius, cornerRadius);
    if (!hasImage())
        return;
    // A brush, as the edge of a clip isn't smooth.
    const QImage &image = m_thumbnail.image;
    const QSizeF fitted = QSizeF(image.size()).scaled(size, Qt::KeepAspectRatio);
    QRectF place(QPointF(), fitted);
    place.moveCenter(cell.center());
    const qreal detail = painter.deviceTransform().m11();
    QBrush brush(image.scaled((fitted * detail).toSize().expandedTo(QSize(1, 1)),
                              Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    const QSize scaled = brush.textureImage().size();
    brush.setTransform(QTransform(place.width() / scaled.width(), 0, 0,
                                  place.height() / scaled.height(), place.x(), place.y()));
    painter.setBrush(brush);
    QPainterPath rounded;
    rounded.addRoundedRect(cell, cornerRadius, cornerRadius);
    QPainterPath shown;
    shown.addRect(place);
    painter.drawPath(place.contains(cell) ? rounded : rounded.intersected(shown));
}

} // namespace velmor
