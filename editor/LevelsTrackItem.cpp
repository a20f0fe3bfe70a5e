#include "editor/LevelsTrackItem.h"

#include <QPainter>

namespace velmor {

namespace {

constexpr QColor trackColor(0, 0, 0, 31); // 0.12 of 255

void drawCapsule(QPainter &painter, const QRectF &rect, const QColor &color)
{
    painter.setBrush(color);
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
}

} // namespace

LevelsTrackItem::LevelsTrackItem(QQuickItem *parent) : PictureItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setKeepMouseGrab(true);
    connect(this, &LevelsTrackItem::changed, this, &LevelsTrackItem::repaint);
}

void LevelsTrackItem::geometryChange(const QRectF &now, const QRectF &before)
{
    PictureItem::geometryChange(now, before);
    if (now.size() != before.size())
        Q_EMIT changed();
}

void LevelsTrackItem::paint(QPainter &painter, QSizeF) const
{
    const LevelsTrack places = track();
    // Bars are narrower than a pixel here and there: soft edges keep their heights comparable.
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_barColor);
    for (const QRectF &bar : places.bars(m_histogram)) {
        if (!bar.isEmpty())
            painter.drawRect(bar);
    }
    drawCapsule(painter, places.trackRect(), trackColor);
    drawCapsule(painter, places.rangeRect(), m_rangeColor);
}

void LevelsTrackItem::mousePressEvent(QMouseEvent *event)
{
    m_dragging = track().nearestKnob(event->position().x());
    mouseMoveEvent(event);
}

void LevelsTrackItem::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging)
        return;
    LevelsTrack moved = track();
    moved.drag(*m_dragging, event->position().x());
    askFor(*m_dragging, moved);
}

bool LevelsTrackItem::moveLow(int key, int modifiers)
{
    return move(Target::low, key, modifiers);
}

bool LevelsTrackItem::moveHigh(int key, int modifiers)
{
    return move(Target::high, key, modifiers);
}

bool LevelsTrackItem::move(Target target, int key, int modifiers)
{
    const bool isLarge = (modifiers & Qt::ShiftModifier) != 0;
    const double step = isLarge ? LevelsTrack::largeKeyStep : LevelsTrack::keyStep;
    LevelsTrack moved = track();
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        moved.nudge(target, -step);
        break;
    case Qt::Key_Right:
    case Qt::Key_Up:
        moved.nudge(target, step);
        break;
    case Qt::Key_Home:
        moved.nudge(target, -1);
        break;
    case Qt::Key_End:
        moved.nudge(target, 1);
        break;
    default:
        return false;
    }
    askFor(target, moved);
    return true;
}

void LevelsTrackItem::askFor(Target target, const LevelsTrack &moved)
{
    if (target == Target::low)
        Q_EMIT lowMoved(moved.low);
    else
        Q_EMIT highMoved(moved.high);
}

} // namespace velmor
