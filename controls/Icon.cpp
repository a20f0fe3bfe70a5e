#include "controls/Icon.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QQmlInfo>
#include <QSvgRenderer>

#include <cmath>

namespace velmor {

namespace {

const QString iconFolder = QStringLiteral(":/velmor/icons");

/// Side of the icon's square for a text of size 1.
constexpr qreal boxPerSize = 1.2;

/// Width of the strokes on the drawings' grid of 24 units: 1.6 for regular text, 2.3 for bold.
qreal strokeWidth(int weight)
{
    return 1.6 + (weight - 400) * 0.0023;
}

/// The drawing with strokes of `width`; empty if there is no such icon. Every file of the set
/// states the width once, as `stroke-width="2"`.
QByteArray drawing(const QString &name, qreal width)
{
    QFile file(QStringLiteral("%1/%2.svg").arg(iconFolder, name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll().replace(QByteArrayLiteral("stroke-width=\"2\""),
                                  "stroke-width=\"" + QByteArray::number(width) + '"');
}

} // namespace

Icon::Icon(QQuickItem *parent) : PictureItem(parent)
{
    connect(this, &Icon::changed, this, &Icon::repaint);
}

void Icon::setSize(qreal size)
{
    if (m_size == size)
        return;
    m_size = size;
    const qreal side = std::round(size * boxPerSize);
    setImplicitSize(side, side);
    Q_EMIT changed();
}

QStringList Icon::names()
{
    QStringList names = QDir(iconFolder).entryList({QStringLiteral("*.svg")}, QDir::Files);
    for (QString &name : names)
        name.chop(4);
    return names;
}

void Icon::paint(QPainter &painter, QSizeF size) const
{
    if (m_name.isEmpty())
        return;
    const QByteArray svg = drawing(m_name, strokeWidth(m_weight));
    QSvgRenderer renderer(svg);
    if (!renderer.isValid()) {
        qmlWarning(this) << "no icon of the name" << m_name;
        return;
    }
    const QRectF area(QPointF(), size);
    renderer.render(&painter, area);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(area, m_color);
}

} // namespace velmor
