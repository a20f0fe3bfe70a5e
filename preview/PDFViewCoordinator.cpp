#include "preview/PDFViewCoordinator.h"

namespace velmor {

void PDFViewCoordinator::setUrl(const QUrl &url)
{
    m_url = url;
    scheduleUpdate();
}

void PDFViewCoordinator::setRevision(int revision)
{
    m_revision = revision;
    scheduleUpdate();
}

void PDFViewCoordinator::setBox(PDFViewBox *box)
{
    m_box = box;
    scheduleUpdate();
}

void PDFViewCoordinator::setView(PDFView *view)
{
    if (m_view)
        disconnect(m_view, nullptr, this, nullptr);
    m_view = view;
    m_loadedURL.reset();
    if (view) {
        connect(view, &PDFView::documentChanged, this, &PDFViewCoordinator::documentChanged);
        connect(view, &PDFView::scaleChanged, this, &PDFViewCoordinator::scaleChanged);
        connect(view, &PDFView::frameChanged, this, &PDFViewCoordinator::frameChanged);
    }
    scheduleUpdate();
}

void PDFViewCoordinator::scheduleUpdate()
{
    Q_EMIT changed();
    if (m_updateScheduled)
        return;
    m_updateScheduled = true;
    QMetaObject::invokeMethod(this, &PDFViewCoordinator::update, Qt::QueuedConnection);
}

void PDFViewCoordinator::update()
{
    m_updateScheduled = false;
    if (m_box)
        m_box->setView(m_view);
    if (!m_view || (m_loadedURL == m_url && m_rev == m_revision))
        return;
    m_loadedURL = m_url;
    m_rev = m_revision;
    m_userZoomed = false;
    m_view->open(m_url);
}

void PDFViewCoordinator::documentChanged()
{
    m_userZoomed = false;
    fit();
}

void PDFViewCoordinator::fit()
{
    if (!m_view || !m_view->document() || m_view->width() <= 1)
        return;
    const double scale = m_view->scaleFactorForSizeToFit();
    if (scale <= 0) // no page
        return;
    m_fitting = true;
    m_view->setScaleFactor(scale);
    m_fitting = false;
}

void PDFViewCoordinator::fitAgain()
{
    m_userZoomed = false;
    fit();
}

void PDFViewCoordinator::scaleChanged()
{
    if (!m_fitting)
        m_userZoomed = true;
}

void PDFViewCoordinator::frameChanged()
{
    if (!m_userZoomed)
        fit();
}

} // namespace velmor
