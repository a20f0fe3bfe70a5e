#include "controls/Spring.h"

#include "controls/Motion.h"

#include <QAbstractAnimation>
#include <QQmlEngine>

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

/// A motion ends at this part of the way it began with.
constexpr qreal stillPart = 0.0005;

/// The longest step, in seconds: a window that stood still for a while doesn't skip the motion.
constexpr qreal longestStep = 0.1;

} // namespace

/// Calls the spring once a frame. Qt's animations all run on one timer, in step with the display.
class Spring::Clock : public QAbstractAnimation {
public:
    explicit Clock(Spring &spring) : m_spring(spring) {}

    int duration() const override { return -1; }

protected:
    void updateCurrentTime(int now) override
    {
        const qreal step = (now - m_last) / 1000.0;
        m_last = now;
        if (step > 0)
            m_spring.advance(std::min(step, longestStep));
    }

    void updateState(State, State) override { m_last = 0; }

private:
    Spring &m_spring;
    int m_last = 0; ///< Milliseconds since the start.
};

Spring::Spring(QObject *parent) : QObject(parent), m_clock(std::make_unique<Clock>(*this))
{
    connect(m_clock.get(), &QAbstractAnimation::stateChanged, this, &Spring::runningChanged);
}

Spring::~Spring()
{
    m_clock->disconnect(this);
}

void Spring::setTarget(const QQmlProperty &property)
{
    m_target = property;
}

void Spring::componentComplete()
{
    m_complete = true;
    if (QQmlEngine *engine = qmlEngine(this))
        m_motion = Motion::of(*engine);
    rest();
}

bool Spring::isRunning() const
{
    return m_clock->state() == QAbstractAnimation::Running;
}

void Spring::setTo(qreal to)
{
    if (m_to == to)
        return;
    m_to = to;
    Q_EMIT toChanged();
    if (!m_complete)
        return;
    if (!m_animated || (m_motion && m_motion->isReduced()))
        return rest();
    m_still = std::abs(m_to - m_value) * stillPart;
    if (!isRunning())
        m_clock->start();
}

void Spring::advance(qreal seconds)
{
    const SpringMoment now =
        springAfter(seconds, {m_value - m_to, m_velocity}, {m_response, m_damping});
    if (std::abs(now.offset) <= m_still && std::abs(now.velocity) * m_response <= m_still)
        rest();
    else
        moveTo(m_to + now.offset, now.velocity);
}

void Spring::moveTo(qreal value, qreal velocity)
{
    m_velocity = velocity;
    m_value = value;
    if (m_target.isValid())
        m_target.write(value);
    Q_EMIT valueChanged();
}

void Spring::rest()
{
    m_clock->stop();
    moveTo(m_to, 0);
}

} // namespace velmor
