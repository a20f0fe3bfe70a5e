#include "bench/corpus/Writing.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainterPath>
#include <QStringList>

namespace corpus {
namespace {

constexpr double mmPerPoint = 25.4 / 72;

constexpr int drawnSize = 100; ///< Pixels; scaled from there.

QFont fontOf(const QString &family)
{
    QFont font(family);
    font.setPixelSize(drawnSize);
    return font;
}

double widthOf(const QString &text, double points, const QString &family)
{
    return QFontMetricsF(fontOf(family)).horizontalAdvance(text) * points * mmPerPoint / drawnSize;
}

/// Letters as outlines, so that their size doesn't hang on the resolution of a paint device.
QPainterPath outline(const QString &text, QPointF start, double points, const QString &family)
{
    QPainterPath path;
    path.addText(0, 0, fontOf(family), text);
    const double scale = points * mmPerPoint / drawnSize;
    return QTransform(scale, 0, 0, scale, start.x(), start.y()).map(path);
}

} // namespace

QString words(QRandomGenerator &random, int count)
{
    static const QStringList syllables{
        QStringLiteral("ta"),  QStringLiteral("ren"), QStringLiteral("mi"), QStringLiteral("lo"),
        QStringLiteral("sab"), QStringLiteral("du"),  QStringLiteral("ke"), QStringLiteral("fil"),
        QStringLiteral("or"),  QStringLiteral("ga"),  QStringLiteral("pe"), QStringLiteral("win"),
    };
    QStringList result;
    for (int i = 0; i < count; ++i) {
        QString word;
        const int length = 1 + int(random.bounded(4));
        for (int part = 0; part < length; ++part)
            word += syllables[random.bounded(int(syllables.size()))];
        if (random.bounded(9) == 0)
            word[0] = word[0].toUpper();
        if (random.bounded(12) == 0)
            word += random.bounded(2) == 0 ? u'.' : u',';
        result += word;
    }
    return result.join(u' ');
}

Canvas::Strokes line(const QString &text, QPointF start, double points, const QString &family)
{
    const QPainterPath path = outline(text, start, points, family);
    return [path](QPainter &painter) {
        painter.drawPath(path);
    };
}

Canvas::Strokes paragraphs(Canvas &canvas, QRectF block, double points, const QString &family)
{
    static const QStringList families{
        QStringLiteral("Liberation Sans"), QStringLiteral("Liberation Serif"),
        QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Mono")};
    const QString chosen =
        family.isEmpty() ? families[canvas.random().bounded(int(families.size()))] : family;
    const double leading = points * mmPerPoint * 1.35;
    const int wordsOfLine = std::max(1, int(block.width() / (points * mmPerPoint * 3)));
    QList<QPainterPath> lines;
    for (double y = block.top() + leading; y < block.bottom(); y += leading) {
        if (canvas.random().bounded(7) == 0)
            continue;
        QString text = words(canvas.random(), wordsOfLine);
        while (widthOf(text, points, chosen) > block.width() && text.contains(u' '))
            text.truncate(text.lastIndexOf(u' '));
        lines += outline(text, {block.left(), y}, points, chosen);
    }
    return [lines](QPainter &painter) {
        for (const QPainterPath &path : lines)
            painter.drawPath(path);
    };
}

QRectF block(const Canvas &canvas, double top, double bottom)
{
    const double side = canvas.width() / 9;
    return QRectF(QPointF(side, canvas.height() * top),
                  QPointF(canvas.width() - side, canvas.height() * bottom));
}

Canvas::Strokes handwriting(Canvas &canvas, QPointF start, double letterMm, int words)
{
    QPainterPath path;
    QPointF at = start;
    const double slant = canvas.uniform(-0.1, 0.35);
    for (int word = 0; word < words; ++word) {
        path.moveTo(at);
        const int letters = 3 + int(canvas.random().bounded(6));
        for (int letter = 0; letter < letters; ++letter) {
            const bool isTall = canvas.random().bounded(4) == 0;
            const double height = letterMm * (isTall ? 2.1 : canvas.uniform(0.8, 1.1));
            const double width = letterMm * canvas.uniform(0.6, 1.0);
            const QPointF top(at.x() + width * 0.5 + slant * height, at.y() - height);
            const QPointF foot(at.x() + width, start.y() + letterMm * canvas.uniform(-0.08, 0.08));
            path.cubicTo(at + QPointF(width * 0.5, 0), top - QPointF(width * 0.5, 0), top);
            path.cubicTo(top + QPointF(width * 0.3, height * 0.2),
                         foot - QPointF(width * 0.8, letterMm * 0.1), foot);
            at = foot;
        }
        at = {at.x() + letterMm * 1.3, start.y()};
    }
    return [path](QPainter &painter) {
        const QBrush none;
        painter.setBrush(none);
        painter.drawPath(path);
    };
}

} // namespace corpus
