#pragma once

#include "browser/GalleryWindow.h"

#include <QPointer>

namespace velmor {

/// Keeps the drawer above its parent window, and in its place beside it when that moves.
///
/// On X11 the drawer is a dialog of the parent and follows it step by step. Wayland tells no
/// window where it is: there the drawer becomes a native part of the parent, which may lie outside
/// of it. Not every compositor gives such a part the keyboard, so a press decides which of the two
/// windows has it, and the parent hands its keys on. Both windows must outlive this.
class WindowAttachment : public QObject {
    Q_OBJECT

public:
    WindowAttachment(CardWindow &parent, GalleryWindow &child);

    [[nodiscard]] CardWindow *parentWindow() const { return m_parent; }

    /// The drawer's place, with the parent's card at `parent`: it stays so far away from it.
    void keepOffset(const QPoint &parent, const QPoint &drawer);
    /// Gives the drawer the keyboard, in front of all windows.
    void activateChild();

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void follow();
    void noticeMove();
    void adopt(const QPoint &topLeft);
    bool routeParentEvent(QEvent &event);
    void routeChildEvent(const QEvent &event);

    QPointer<CardWindow> m_parent;
    QPointer<GalleryWindow> m_child;
    QPoint m_followed; ///< The parent's card, when the drawer went along with it last.
    QPoint m_offset;   ///< From there to the drawer's place.
};

} // namespace velmor
