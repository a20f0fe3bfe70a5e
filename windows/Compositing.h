#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>

namespace velmor {

/// Whether what a window leaves transparent shows what lies below. On X11 that takes a compositing
/// manager, which may come and go while the application runs; elsewhere it is always so.
///
/// Needs the QGuiApplication. Main thread.
class Compositing : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit Compositing(QObject *parent = nullptr);
    ~Compositing() override;
    Q_DISABLE_COPY_MOVE(Compositing)

    [[nodiscard]] bool isActive() const { return m_active; }

Q_SIGNALS:
    void activeChanged();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void watchOwner();
    void setActive(bool active);

    bool m_active = true;
    uint32_t m_selection = 0;       ///< The atom that a compositing manager owns.
    uint8_t m_ownerChangeEvent = 0; ///< Type of the event that tells of a new owner; 0 for none.
};

} // namespace velmor
