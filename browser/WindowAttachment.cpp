#include "browser/WindowAttachment.h"

#include "windows/WindowPlace.h"

#include <QGuiApplication>
#include <qpa/qwindowsysteminterface.h>

namespace velmor {

namespace {

void giveKeyboard(QWindow *window)
{
    if (QGuiApplication::focusWindow() != window)
        QWindowSystemInterface::handleWindowActivated(window, Qt::MouseFocusReason);
}

} // namespace

WindowAttachment::WindowAttachment(CardWindow &parent, GalleryWindow &child)
    : m_parent(&parent), m_child(&child)
{
    if (isPlaceKnown()) {
        child.setTransientParent(&parent);
        connect(&parent, &QWindow::xChanged, this, &WindowAttachment::follow);
        connect(&parent, &QWindow::yChanged, this, &WindowAttachment::follow);
        connect(&child, &QWindow::xChanged, this, &WindowAttachment::noticeMove);
        connect(&child, &QWindow::yChanged, this, &WindowAttachment::noticeMove);
    } else {
        child.setParent(&parent);
        parent.installEventFilter(this);
        child.installEventFilter(this);
    }
    connect(&child, &CardWindow::dragged, this, &WindowAttachment::adopt);
}

void WindowAttachment::keepOffset(const QPoint &parent, const QPoint &drawer)
{
    m_followed = parent;
    m_offset = drawer - parent;
}

void WindowAttachment::follow()
{
    m_followed = m_parent->cardGeometry().topLeft();
    m_child->setPlace(m_followed + m_offset);
}

/// Window managers let the user move any window; the drawer then keeps its new place.
void WindowAttachment::noticeMove()
{
    if (!m_child->isOwnMove())
        adopt(m_child->cardGeometry().topLeft());
}

void WindowAttachment::adopt(const QPoint &topLeft)
{
    m_child->adoptPlace(topLeft);
    // The parent may be a step ahead already, one that the drawer has yet to go.
    keepOffset(m_followed, m_child->place());
}

void WindowAttachment::activateChild()
{
    if (isPlaceKnown()) {
        m_child->raise();
        m_child->requestActivate();
    } else {
        giveKeyboard(m_child);
    }
}

bool WindowAttachment::eventFilter(QObject *receiver, QEvent *event)
{
    if (receiver == m_parent)
        return routeParentEvent(*event);
    routeChildEvent(*event);
    return false;
}

bool WindowAttachment::routeParentEvent(QEvent &event)
{
    const bool childHasKeyboard = QGuiApplication::focusWindow() == m_child;
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
        if (childHasKeyboard)
            giveKeyboard(m_parent);
        return false;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return childHasKeyboard && QCoreApplication::sendEvent(m_child, &event);
    default:
        return false;
    }
}

void WindowAttachment::routeChildEvent(const QEvent &event)
{
    if (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::TouchBegin)
        giveKeyboard(m_child);
    else if (event.type() == QEvent::Hide && QGuiApplication::focusWindow() == m_child)
        giveKeyboard(m_parent);
}

} // namespace velmor
