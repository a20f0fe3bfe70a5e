#pragma once

#include "windows/CardWindow.h"

#include <QQmlComponent>

namespace velmor {

/// The window of the drawer. `DrawerWindow.qml` builds on it.
class GalleryWindow : public velmor::CardWindow {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQmlComponent *content MEMBER m_content NOTIFY contentChanged)
    Q_PROPERTY(qreal presence READ presence NOTIFY presenceChanged)
    Q_PROPERTY(qreal slide READ slide NOTIFY slideChanged)
    Q_PROPERTY(qreal drawnSlide READ drawnSlide NOTIFY slideChanged)

public:
    explicit GalleryWindow(QWindow *parent = nullptr) : CardWindow(Resizing::byUser, parent) {}

    /// How opaque the drawer is, 0 to 1.
    [[nodiscard]] qreal presence() const { return m_presence; }
    void setPresence(qreal presence);
    /// How far the drawer is from its place, to the right, in logical pixels.
    [[nodiscard]] qreal slide() const { return m_slide; }
    void setSlide(qreal slide);
    /// The part of it that happens inside the window: all, as long as there is a margin to slide
    /// in. Without one the window itself goes.
    [[nodiscard]] qreal drawnSlide() const { return composited() ? m_slide : 0; }

    /// The card's place on the screen without the slide.
    [[nodiscard]] QPoint place() const { return m_place; }
    void setPlace(const QPoint &topLeft);
    /// Takes `topLeft`, where the card went without it, as the place.
    void adoptPlace(const QPoint &topLeft);

Q_SIGNALS:
    void contentChanged();
    void presenceChanged();
    void slideChanged();

private:
    [[nodiscard]] QPoint windowSlide() const;

    QQmlComponent *m_content = nullptr;
    qreal m_presence = 0;
    qreal m_slide = 0;
    QPoint m_place;
};

} // namespace velmor
