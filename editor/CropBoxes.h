#pragma once

#include "pipeline/Quad.h"

#include <QList>
#include <QPointF>
#include <QRectF>

#include <optional>

namespace velmor {

/// A place in `rect` as fractions of it; not clamped. And back.
[[nodiscard]] QPointF norm(QPointF point, const QRectF &rect);
[[nodiscard]] QPointF denorm(QPointF point, const QRectF &rect);

/// Each coordinate held to 0 to 1.
[[nodiscard]] QPointF clamp01(QPointF point);

/// Whether fractions name a place on the image; its edges count.
[[nodiscard]] bool isOnImage(QPointF place);

/// A corner of a finished box.
struct BoxCorner {
    int box = 0;
    int corner = 0; ///< 0 to 3.

    bool operator==(const BoxCorner &) const = default;
};

/// The regions to cut out of a page, while they are being made: by clicks, drags and keys.
///
/// A plain value. Corners are fractions of the image; `rect` is where the image lies at the moment,
/// and places of the pointer are in the same coordinates.
class CropBoxes {
public:
    /// How near to a corner a press takes hold of it, in points of the view.
    static constexpr double grabRadius = 12;
    /// A gesture that moved farther than this on an axis is no click.
    static constexpr double clickSlack = 3;

    /// Finished boxes, in the order of making.
    [[nodiscard]] const QList<Quad> &boxes() const { return m_boxes; }
    /// The corners of the unfinished box, 0 to 3, in click order.
    [[nodiscard]] const QList<QPointF> &pending() const { return m_pending; }
    /// The corner in hand.
    [[nodiscard]] const std::optional<BoxCorner> &dragTarget() const { return m_dragTarget; }
    /// Whether the present gesture is a drag.
    [[nodiscard]] bool didDrag() const { return m_didDrag; }
    /// The corner that arrow keys move.
    [[nodiscard]] const std::optional<BoxCorner> &currentCorner() const { return m_current; }
    /// A region found on the page that may become a box. Only until a corner or a box is made.
    [[nodiscard]] const std::optional<Quad> &proposal() const { return m_proposal; }
    /// Where a corner of a finished box lies.
    [[nodiscard]] QPointF cornerAt(BoxCorner corner) const;
    [[nodiscard]] bool isEmpty() const { return m_boxes.isEmpty() && m_pending.isEmpty(); }

    // --- The pointer -------------------------------------------------------------------------

    /// The first corner in the order of making that is less than `grabRadius` away from `point`.
    [[nodiscard]] std::optional<BoxCorner> hitCorner(QPointF point, const QRectF &rect) const;

    /// The pointer is down, and was pressed at `start`.
    void dragTo(QPointF start, QPointF now, const QRectF &rect);
    /// The pointer was released, which is also its last move. A click within the image sets a
    /// corner, the fourth makes a box.
    void release(QPointF at, const QRectF &rect);
    /// The gesture is over without a release; what a drag has moved stays.
    void endGesture();

    // --- Keys --------------------------------------------------------------------------------

    /// Which way `cycle` goes.
    enum class Direction { forward, backward };

    /// Makes the next corner the current one, through all boxes. False at the end of the round,
    /// with no corner current, so that the focus can move on; also without boxes.
    bool cycle(Direction direction);
    /// Moves the current corner by points of the view, within the image. False without one.
    bool nudge(QPointF delta, const QRectF &rect);
    /// Makes a box of the middle half of that part of the image which lies within `visible`; its
    /// first corner becomes the current one. An unfinished box stays.
    void addBox(const QRectF &visible, const QRectF &rect);

    // --- Both --------------------------------------------------------------------------------

    /// Takes a proposal, unless something has been clicked or added before.
    void propose(const Quad &quad);
    /// Makes the proposal a box, with its first corner the current one. False if there is none.
    bool acceptProposal();
    /// Takes back the last corner of the unfinished box, else the last box whole. A proposal that
    /// was accepted is one again after that, if it is all that was made.
    void removeLast();
    /// Drops the unfinished box.
    void dropPending() { m_pending.clear(); }

private:
    void setCorner(BoxCorner corner, QPointF place);
    void click(QPointF place);
    void append(const Quad &box);
    void begin();

    QList<Quad> m_boxes;
    QList<QPointF> m_pending;
    std::optional<QPointF> m_start; ///< Of the present gesture.
    std::optional<BoxCorner> m_dragTarget;
    std::optional<BoxCorner> m_current;
    std::optional<Quad> m_proposal;
    std::optional<Quad> m_accepted; ///< The proposal that is the only thing made.
    bool m_hasBegun = false;        ///< Something has been clicked or added.
    bool m_didDrag = false;
};

} // namespace velmor
