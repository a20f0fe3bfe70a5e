#include "editor/LoupeLens.h"

#include "editor/PixelGrid.h"

#include <QPainter>

#include <cmath>

namespace velmor {

namespace {

constexpr qreal squareLine = 1.5;
constexpr qreal ringWidth = 2;
constexpr qreal outerRingWidth = 0.5;

/// The blocks of the lens and its square, `ratio` pixels for a point, not yet round.
QImage blocks(const Loupe &loupe, const QImage &page, qreal ratio)
{
    const int side = qRound(Loupe::diameter * ratio);
    QImage lens(side, side, QImage::Format_RGB32);
    lens.fill(Qt::white);
    QPainter painter(&lens);
    const auto edge = [ratio](int cell) {
        return qRound(cell * Loupe::cellSize * ratio);
    };
    const auto block = [&](QPoint pixel) {
        const QPoint cell = pixel - loupe.source.topLeft();
        return QRect(QPoint(edge(cell.x()), edge(cell.y())),
                     QPoint(edge(cell.x() + 1) - 1, edge(cell.y() + 1) - 1));
    };
    const QRect shown = loupe.source & page.rect();
    for (int y = shown.top(); y <= shown.bottom(); ++y) {
        for (int x = shown.left(); x <= shown.right(); ++x)
            painter.fillRect(block({x, y}), page.pixelColor(x, y));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::red, squareLine * ratio, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawRect(QRectF(block(loupe.pixel)));
    return lens;
}

} // namespace

LoupeLens::LoupeLens(QQuickItem *parent) : PictureItem(parent)
{
    const double side = diameter() + 2 * rim();
    setImplicitSize(side, side);
}

void LoupeLens::setEditor(PageEditor *editor)
{
    if (editor == m_editor)
        return;
    if (m_editor)
        m_editor->disconnect(this);
    m_editor = editor;
    if (m_editor) {
        connect(m_editor, &PageEditor::hoverChanged, this, &LoupeLens::follow);
        connect(m_editor, &PageEditor::imageChanged, this, &LoupeLens::follow);
        connect(m_editor, &PageEditor::placementChanged, this, &LoupeLens::follow);
    }
    follow();
    Q_EMIT editorChanged();
}

void LoupeLens::follow()
{
    m_loupe = m_editor ? m_editor->loupe() : std::nullopt;
    repaint();
    Q_EMIT moved();
}

QPointF LoupeLens::onPixels(const QQuickItem *item, QPointF place) const
{
    return item && item->window() ? onPixelGrid(*item, place) : place;
}

void LoupeLens::paint(QPainter &painter, QSizeF size) const
{
    if (!m_loupe || !m_editor)
        return;
    const qreal radius = Loupe::diameter / 2;
    // A clip would have ragged edges; a brush has soft ones.
    const qreal ratio = painter.device()->devicePixelRatio();
    QBrush brush(blocks(*m_loupe, m_editor->baseImage(), ratio));
    // The rim need not be whole pixels, but the blocks begin at one.
    const qreal start = std::round((size.width() / 2 - radius) * ratio) / ratio;
    brush.setTransform(QTransform::fromTranslate(start, start).scale(1 / ratio, 1 / ratio));
    const QPointF middle(start + radius, start + radius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawEllipse(middle, radius, radius);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, ringWidth));
    painter.drawEllipse(middle, radius, radius);
    const qreal outer = radius + (ringWidth + outerRingWidth) / 2;
    painter.setPen(QPen(QColor(0, 0, 0, 64), outerRingWidth));
    painter.drawEllipse(middle, outer, outer);
}

} // namespace velmor
