#include "editor/EditorWords.h"
#include "editor/PageEditor.h"

#include <QHash>

namespace velmor {

namespace {

/// How far an arrow key moves a corner, and with Shift, in points of the view.
constexpr double keyStep = 1;
constexpr double largeKeyStep = 10;
/// And the page.
constexpr double panStep = 20;
constexpr double largePanStep = 100;

/// Where an arrow key points to; nothing for other keys.
std::optional<QPointF> directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return QPointF(-1, 0);
    case Qt::Key_Right:
        return QPointF(1, 0);
    case Qt::Key_Up:
        return QPointF(0, -1);
    case Qt::Key_Down:
        return QPointF(0, 1);
    default:
        return std::nullopt;
    }
}

} // namespace

// --- Keys ------------------------------------------------------------------------------------

bool PageEditor::handleKey(const QString &name)
{
    if (name == u"escape")
        return leaveStep();
    if (name == u"undo") {
        isCrop() ? removeLast() : resetMagic();
        return true;
    }
    if (name == u"delete" && isCrop()) {
        removeLast();
        return true;
    }
    if (name == u"return" && (isCrop() ? !boxes().isEmpty() : magicTouched())) {
        apply();
        return true;
    }
    return false;
}

bool PageEditor::leaveStep()
{
    if (isCrop() && !pending().isEmpty()) {
        m_crop.dropPending();
        Q_EMIT boxesChanged();
    } else if (isMagic() && magicTouched()) {
        resetMagic();
    } else {
        cancel();
    }
    return true;
}

bool PageEditor::handleAreaKey(int key, int modifiers)
{
    const auto other = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (!hasImage() || (modifiers & other) != 0)
        return false;
    const bool isShifted = (modifiers & Qt::ShiftModifier) != 0;
    if (isCrop() && handleCropKey(key, isShifted))
        return true;
    const std::optional<QPointF> direction = directionOf(key);
    return direction && panByKey(*direction, isShifted);
}

bool PageEditor::panByKey(QPointF direction, bool isShifted)
{
    if (!isZoomedIn())
        return false;
    applyPan(-direction * (isShifted ? largePanStep : panStep));
    return true;
}

bool PageEditor::handleCropKey(int key, bool isShifted)
{
    if (key == Qt::Key_Tab && !isShifted && hasProposal()) {
        acceptProposal();
        return true;
    }
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
        const bool isBack = key == Qt::Key_Backtab || isShifted;
        return cycleCorners(isBack ? CropBoxes::Direction::backward
                                   : CropBoxes::Direction::forward);
    }
    if (key == Qt::Key_Insert || key == Qt::Key_N) {
        addBox();
        return true;
    }
    const std::optional<QPointF> direction = directionOf(key);
    if (!direction || !m_crop.nudge(*direction * (isShifted ? largeKeyStep : keyStep), imageRect()))
        return false;
    revealCurrentCorner();
    Q_EMIT boxesChanged();
    return true;
}

bool PageEditor::cycleCorners(CropBoxes::Direction direction)
{
    const bool isWithin = m_crop.cycle(direction);
    revealCurrentCorner();
    Q_EMIT boxesChanged();
    return isWithin;
}

QString PageEditor::currentCornerName() const
{
    const auto &corner = m_crop.currentCorner();
    return corner ? EditorWords::cornerName(*corner) : QString();
}

QString PageEditor::currentCornerPlace() const
{
    const auto &corner = m_crop.currentCorner();
    return corner ? EditorWords::cornerPlace(m_crop.cornerAt(*corner)) : QString();
}

// --- The pointer -----------------------------------------------------------------------------

void PageEditor::dragChanged(QPointF start, QPointF now)
{
    if (!isCrop() || !hasImage())
        return;
    m_crop.dragTo(start, now, imageRect());
    Q_EMIT boxesChanged();
}

void PageEditor::dragEnded(QPointF at)
{
    if (isCrop() && hasImage())
        m_crop.release(at, imageRect());
    else if (isMagic() && hasImage())
        magicClick(at);
    m_crop.endGesture();
    Q_EMIT boxesChanged();
}

void PageEditor::dragCancelled()
{
    m_crop.endGesture();
    Q_EMIT boxesChanged();
}

void PageEditor::magicClick(QPointF at)
{
    const QPointF n = norm(at, imageRect());
    if (!isOnImage(n))
        return;
    MagicLevels levels = m_levels;
    levels.click(m_sample ? sampleLuminance(*m_sample, n) : 0);
    setLevels(levels);
}

void PageEditor::hover(QPointF at)
{
    m_hoverPoint = at;
    Q_EMIT hoverChanged();
}

void PageEditor::hoverLeft()
{
    m_hoverPoint.reset();
    Q_EMIT hoverChanged();
}

std::optional<Loupe> PageEditor::loupe() const
{
    if (!isMagic() || !m_hoverPoint || !hasImage())
        return std::nullopt;
    return loupeAt(*m_hoverPoint, imageRect(), m_baseImage.size(), viewSize());
}

QString PageEditor::loupeLabel() const
{
    if (!loupe() || !m_sample)
        return {};
    return velmor::loupeLabel(sampleLuminance(*m_sample, norm(*m_hoverPoint, imageRect())));
}

// --- Boxes -----------------------------------------------------------------------------------

void PageEditor::acceptProposal()
{
    if (hasImage() && m_crop.acceptProposal())
        Q_EMIT boxesChanged();
}

void PageEditor::removeLast()
{
    m_crop.removeLast();
    Q_EMIT boxesChanged();
}

void PageEditor::addBox()
{
    if (!isCrop() || !hasImage())
        return;
    m_crop.addBox(QRectF({}, viewSize()), imageRect());
    Q_EMIT boxesChanged();
}

} // namespace velmor
