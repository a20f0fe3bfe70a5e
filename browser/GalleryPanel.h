#pragma once

#include "browser/GalleryWindow.h"
#include "browser/WindowAttachment.h"

#include <QQuickItem>
#include <QVariantAnimation>

#include <memory>

namespace velmor {

/// Shows its `content` in a drawer: a window attached to the right edge of the window that this
/// item is in.
///
/// The item itself is empty. The drawer's window is made when it is first needed and kept, so that
/// the screen in it keeps its state from one opening to the next. It fades in while it slides in
/// from the left, or only fades in with reduced motion, and fades out in its place; what was opened
/// again while it faded out stays.
/// `isPresented` goes both ways: the user can close the drawer from within. Without a window to
/// attach to, an opening waits for one, which must be a `CardWindow`. Main thread.
class GalleryPanel : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_CLASSINFO("DefaultProperty", "content")
    Q_PROPERTY(bool isPresented READ isPresented WRITE setPresented NOTIFY isPresentedChanged)
    Q_PROPERTY(QQmlComponent *content MEMBER m_content)

public:
    explicit GalleryPanel(QQuickItem *parent = nullptr);
    ~GalleryPanel() override;

    [[nodiscard]] bool isPresented() const { return m_isPresented; }
    void setPresented(bool presented);
    /// Whether the drawer is out. While it fades away it isn't.
    [[nodiscard]] bool shown() const { return m_shown; }
    /// The drawer's window; null before its first opening.
    [[nodiscard]] GalleryWindow *child() const { return m_child.get(); }

Q_SIGNALS:
    void isPresentedChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    void update();
    [[nodiscard]] bool make();
    void position(CardWindow &parent);
    void animateIn();
    void animateOut();
    void step(qreal progress);
    void arrive();

    bool m_isPresented = false;
    bool m_shown = false;
    QQmlComponent *m_content = nullptr;
    std::unique_ptr<GalleryWindow> m_child;
    std::unique_ptr<WindowAttachment> m_attachment;
    QVariantAnimation m_animation; ///< From 0 to 1, of whichever way it goes.
    qreal m_presenceBefore = 0;    ///< The drawer's, when the animation began.
    qreal m_slideBefore = 0;
};

} // namespace velmor
