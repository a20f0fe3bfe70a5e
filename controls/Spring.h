#pragma once

#include "controls/SpringMotion.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QQmlProperty>
#include <QQmlPropertyValueSource>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace velmor {

class Motion;

/// Moves a number to where it should be, like a spring.
///
///     Spring on x { to: tab.x; response: 0.32; damping: 0.82 }
///
/// When `to` changes on the way, place and speed are kept and the motion bends to the new goal. The
/// first value is taken at once, and so is every value while `Motion.reduced` holds or `animated`
/// is false. Stand-alone it moves nothing but its own `value`, for others to bind to.
///
/// It runs on the clock of Qt's animations: once a frame, and not at all when at rest.
class Spring : public QObject, public QQmlPropertyValueSource, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlPropertyValueSource QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(qreal to READ to WRITE setTo NOTIFY toChanged)
    /// Seconds of one swing.
    Q_PROPERTY(qreal response MEMBER m_response NOTIFY natureChanged)
    /// Damping fraction: the smaller, the livelier.
    Q_PROPERTY(qreal damping MEMBER m_damping NOTIFY natureChanged)
    Q_PROPERTY(bool animated MEMBER m_animated NOTIFY animatedChanged)
    Q_PROPERTY(qreal value READ value NOTIFY valueChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

public:
    explicit Spring(QObject *parent = nullptr);
    ~Spring() override;

    void setTarget(const QQmlProperty &property) override;
    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] qreal to() const { return m_to; }
    void setTo(qreal to);
    [[nodiscard]] qreal value() const { return m_value; }
    [[nodiscard]] bool isRunning() const;

    /// Lets `seconds` pass at once.
    Q_INVOKABLE void advance(qreal seconds);

Q_SIGNALS:
    void toChanged();
    void natureChanged();
    void animatedChanged();
    void valueChanged();
    void runningChanged();

private:
    class Clock;

    void moveTo(qreal value, qreal velocity);
    void rest();

    QQmlProperty m_target;
    Motion *m_motion = nullptr;
    std::unique_ptr<Clock> m_clock;
    qreal m_to = 0;
    qreal m_response = 0.35;
    qreal m_damping = 0.8;
    qreal m_value = 0;
    qreal m_velocity = 0; ///< Per second.
    qreal m_still = 0;    ///< Distances below this one can't be seen.
    bool m_animated = true;
    bool m_complete = false;
};

} // namespace velmor
