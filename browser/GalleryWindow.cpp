#include "browser/GalleryWindow.h"

#include <cmath>

namespace velmor {

void GalleryWindow::setPresence(qreal presence)
{
    m_presence = presence;
    Q_EMIT presenceChanged();
}

void GalleryWindow::setSlide(qreal slide)
{
    m_slide = slide;
    if (!composited())
        setCardPosition(m_place + windowSlide());
    Q_EMIT slideChanged();
}

void GalleryWindow::setPlace(const QPoint &topLeft)
{
    m_place = topLeft;
    setCardPosition(m_place + windowSlide());
}

void GalleryWindow::adoptPlace(const QPoint &topLeft)
{
    m_place = topLeft - windowSlide();
}

QPoint GalleryWindow::windowSlide() const
{
    return composited() ? QPoint() : QPoint(static_cast<int>(std::lround(m_slide)), 0);
}

} // namespace velmor
