#include "editor/CropBoxes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

QPointF norm(QPointF point, const QRectF &rect)
{
    return {(point.x() - rect.left()) / rect.width(), (point.y() - rect.top()) / rect.height()};
}

QPointF denorm(QPointF point, const QRectF &rect)
{
    return {rect.left() + point.x() * rect.width(), rect.top() + point.y() * rect.height()};
}

QPointF clamp01(QPointF point)
{
    return {std::min(std::max(point.x(), 0.0), 1.0), std::min(std::max(point.y(), 0.0), 1.0)};
}

bool isOnImage(QPointF place)
{
    return place.x() >= 0 && place.x() <= 1 && place.y() >= 0 && place.y() <= 1;
}

std::optional<BoxCorner> CropBoxes::hitCorner(QPointF point, const QRectF &rect) const
{
    for (int box = 0; box < m_boxes.size(); ++box) {
        for (int corner = 0; corner < 4; ++corner) {
            const QPointF place = denorm(cornerAt({box, corner}), rect);
            if (std::hypot(place.x() - point.x(), place.y() - point.y()) < grabRadius)
                return BoxCorner{box, corner};
        }
    }
    return std::nullopt;
}

void CropBoxes::dragTo(QPointF start, QPointF now, const QRectF &rect)
{
    m_start = start;
    if (!m_dragTarget && !m_didDrag) {
        m_dragTarget = hitCorner(start, rect);
        if (m_dragTarget)
            m_current = m_dragTarget;
    }
    const QPointF moved = now - start;
    if (m_dragTarget) {
        m_didDrag = true;
        setCorner(*m_dragTarget, norm(now, rect));
    } else if (std::abs(moved.x()) > clickSlack || std::abs(moved.y()) > clickSlack) {
        m_didDrag = true;
    }
}

void CropBoxes::release(QPointF at, const QRectF &rect)
{
    if (m_start)
        dragTo(*m_start, at, rect);
    if (!m_dragTarget && !m_didDrag)
        click(norm(at, rect));
    endGesture();
}

void CropBoxes::click(QPointF place)
{
    if (!isOnImage(place))
        return;
    begin();
    m_pending.append(place);
    if (m_pending.size() < 4)
        return;
    m_boxes.append(orderQuad({m_pending[0], m_pending[1], m_pending[2], m_pending[3]}));
    m_pending.clear();
}

void CropBoxes::endGesture()
{
    m_start.reset();
    m_dragTarget.reset();
    m_didDrag = false;
}

bool CropBoxes::cycle(Direction direction)
{
    const int count = 4 * static_cast<int>(m_boxes.size());
    const int step = direction == Direction::forward ? 1 : -1;
    const int before = direction == Direction::forward ? -1 : count;
    const int next = (m_current ? 4 * m_current->box + m_current->corner : before) + step;
    if (next < 0 || next >= count) {
        m_current.reset();
        return false;
    }
    m_current = BoxCorner{next / 4, next % 4};
    return true;
}

bool CropBoxes::nudge(QPointF delta, const QRectF &rect)
{
    if (!m_current || rect.isEmpty())
        return false;
    const QPointF share(delta.x() / rect.width(), delta.y() / rect.height());
    setCorner(*m_current, cornerAt(*m_current) + share);
    return true;
}

void CropBoxes::addBox(const QRectF &visible, const QRectF &rect)
{
    const QRectF shown = visible.intersected(rect);
    if (shown.isEmpty())
        return;
    const QPointF quarter(shown.width() / 4, shown.height() / 4);
    const QRectF box(norm(shown.center() - quarter, rect), norm(shown.center() + quarter, rect));
    append({
        {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()}
    });
}

void CropBoxes::propose(const Quad &quad)
{
    if (!m_hasBegun)
        m_proposal = quad;
}

bool CropBoxes::acceptProposal()
{
    if (!m_proposal)
        return false;
    const Quad accepted = *m_proposal;
    append(accepted);
    m_accepted = accepted;
    return true;
}

void CropBoxes::begin()
{
    m_hasBegun = true;
    m_proposal.reset();
    m_accepted.reset();
}

void CropBoxes::append(const Quad &box)
{
    begin();
    m_boxes.append(box);
    m_current = BoxCorner{static_cast<int>(m_boxes.size()) - 1, 0};
}

void CropBoxes::removeLast()
{
    if (!m_pending.isEmpty()) {
        m_pending.removeLast();
        return;
    }
    if (m_boxes.isEmpty())
        return;
    m_boxes.removeLast();
    if (m_accepted) {
        m_hasBegun = false;
        m_proposal = std::exchange(m_accepted, std::nullopt);
    }
    const auto isGone = [this](const std::optional<BoxCorner> &corner) {
        return corner && corner->box >= m_boxes.size();
    };
    if (isGone(m_current))
        m_current.reset();
    if (isGone(m_dragTarget))
        m_dragTarget.reset();
}

QPointF CropBoxes::cornerAt(BoxCorner corner) const
{
    return m_boxes[corner.box].corners[static_cast<size_t>(corner.corner)];
}

void CropBoxes::setCorner(BoxCorner corner, QPointF place)
{
    m_boxes[corner.box].corners[static_cast<size_t>(corner.corner)] = clamp01(place);
}

} // namespace velmor
