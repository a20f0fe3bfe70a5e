#include "bench/corpus/SheetArt.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace corpus {
namespace {

constexpr double millimetersPerInch = 25.4;

/// One letter on the baseline at the origin, `x` high where it has no ascender, in millimetres.
/// Answers how far the pen moves on.
double drawLetter(QPainter &painter, double x, Random &random)
{
    const double width = x * random.between(0.35, 0.85);
    QPainterPath path;
    switch (random.whole(0, 7)) {
    case 0: // A bowl with an ascender.
        path.moveTo(0, 0);
        path.lineTo(0, -1.55 * x);
        path.addEllipse(QRectF(0, -x, width, x));
        break;
    case 1: // A bowl with a descender.
        path.moveTo(0, 0.5 * x);
        path.lineTo(0, -x);
        path.addEllipse(QRectF(0, -x, width, x));
        break;
    case 2:
        path.moveTo(0, 0);
        path.lineTo(0, -x);
        path.cubicTo(0.3 * width, -1.15 * x, width, -1.1 * x, width, -0.6 * x);
        path.lineTo(width, 0);
        break;
    case 3:
        path.moveTo(0, -x);
        path.lineTo(0.5 * width, 0);
        path.lineTo(width, -x);
        break;
    case 4:
        path.moveTo(0, 0);
        path.lineTo(0, -1.5 * x);
        break;
    case 5:
        path.moveTo(width, -0.85 * x);
        path.cubicTo(0, -1.3 * x, 0, -0.5 * x, 0.5 * width, -0.5 * x);
        path.cubicTo(1.1 * width, -0.5 * x, width, 0.2 * x, 0, -0.12 * x);
        break;
    case 6:
        path.moveTo(0, -0.55 * x);
        path.lineTo(width, -0.55 * x);
        path.arcTo(QRectF(0, -x, width, x), 0, 300);
        break;
    default:
        path.addEllipse(QRectF(0, -x, width, x));
    }
    painter.drawPath(path);
    return width + 0.32 * x;
}

/// Words on the baseline from `from` to at most `right`.
void drawWords(QPainter &painter, QPointF from, double right, double x, Random &random)
{
    QPen pen = painter.pen();
    pen.setWidthF(x * random.between(0.14, 0.2));
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    while (true) {
        const int letters = random.whole(1, 9);
        if (from.x() + letters * 0.95 * x > right)
            return;
        for (int i = 0; i < letters; ++i) {
            painter.save();
            painter.translate(from);
            from.rx() += drawLetter(painter, x, random);
            painter.restore();
        }
        from.rx() += 0.6 * x;
    }
}

void drawParagraphs(QPainter &painter, QRectF box, double x, Random &random)
{
    double y = box.top() + 2 * x;
    while (y < box.bottom()) {
        const int lines = random.whole(2, 9);
        for (int line = 0; line < lines && y < box.bottom(); ++line, y += 2.6 * x) {
            const bool isLast = line + 1 == lines;
            const double right = box.left() + box.width() * (isLast ? random.between(0.2, 0.9) : 1);
            drawWords(painter, {box.left(), y}, right, x, random);
        }
        y += random.between(1, 3) * x;
    }
}

void drawText(QPainter &painter, QRectF page, Random &random)
{
    const double margin = std::min(page.width() * 0.12, random.between(8, 25));
    const QRectF box = page.adjusted(margin, margin, -margin, -margin);
    const double x = std::min(random.between(1.3, 2.2), box.width() / 30);
    drawWords(painter, {box.left(), box.top()}, box.center().x(), 2 * x, random);
    if (random.chance(0.35)) {
        const double gap = 3 * x;
        const double half = (box.width() - gap) / 2;
        drawParagraphs(painter, {box.left(), box.top() + 3 * x, half, box.height() - 3 * x}, x,
                       random);
        drawParagraphs(painter,
                       {box.left() + half + gap, box.top() + 3 * x, half, box.height() * 0.8}, x,
                       random);
    } else {
        drawParagraphs(painter, box.adjusted(0, 3 * x, 0, -box.height() * random.between(0, 0.4)),
                       x, random);
    }
}

void drawFewLines(QPainter &painter, QRectF page, Random &random)
{
    const double left = page.width() * 0.12;
    const double x = std::min(1.8, page.width() / 40);
    double y = page.height() * random.between(0.1, 0.3);
    drawWords(painter, {left, y}, page.width() * 0.5, 1.6 * x, random);
    const int lines = random.whole(3, 6);
    for (int line = 0; line < lines; ++line) {
        y += 3 * x;
        drawWords(painter, {left, y}, page.width() * random.between(0.6, 0.88), x, random);
    }
}

void drawTable(QPainter &painter, QRectF page, Random &random)
{
    const QRectF box = page.adjusted(15, 20, -15, -random.between(25, 90));
    const int columns = random.whole(3, 6);
    const int rows = int(box.height() / random.between(7, 12));
    QPen pen = painter.pen();
    for (int row = 0; row <= rows; ++row) {
        const double y = box.top() + box.height() * row / rows;
        pen.setWidthF(row == 0 ? 0.5 : 0.2);
        painter.setPen(pen);
        painter.drawLine(QPointF(box.left(), y), QPointF(box.right(), y));
    }
    for (int column = 0; column <= columns; ++column) {
        const double left = box.left() + box.width() * column / columns;
        pen.setWidthF(0.2);
        painter.setPen(pen);
        painter.drawLine(QPointF(left, box.top()), QPointF(left, box.bottom()));
        for (int row = 0; row < rows && column < columns; ++row) {
            const double y = box.top() + box.height() * (row + 0.7) / rows;
            drawWords(painter, {left + 2, y},
                      left + box.width() / columns * random.between(0.5, 0.9), 1.5, random);
        }
    }
}

void drawVerticalText(QPainter &painter, QRectF page, Random &random)
{
    const double side = random.between(3, 4.2);
    QPen pen = painter.pen();
    pen.setWidthF(side * 0.08);
    painter.setPen(pen);
    for (double x = page.width() - 20; x > 20; x -= 1.7 * side) {
        const double bottom = page.height() * random.between(0.5, 0.9);
        for (double y = 20; y < bottom; y += 1.08 * side) {
            const int strokes = random.whole(3, 7);
            for (int i = 0; i < strokes; ++i) {
                const double at = random.between(0.05, 0.95) * side;
                const bool isLevel = random.chance(0.5);
                painter.drawLine(QPointF(x + (isLevel ? 0 : at), y + (isLevel ? at : 0)),
                                 QPointF(x + (isLevel ? side : at), y + (isLevel ? at : side)));
            }
        }
    }
}

void drawReceipt(QPainter &painter, QRectF page, Random &random)
{
    const double x = 1.3;
    double y = 8;
    drawWords(painter, {page.width() * 0.25, y}, page.width() * 0.8, 2.2, random);
    while ((y += 3.6) < page.height() - 22) {
        drawWords(painter, {4, y}, page.width() * random.between(0.4, 0.7), x, random);
        drawWords(painter, {page.width() * 0.76, y}, page.width() - 3, x, random);
    }
    for (double left = page.width() * 0.2; left < page.width() * 0.8;) {
        const double bar = random.between(0.2, 0.9);
        painter.fillRect(QRectF(left, page.height() - 17, bar, 10), painter.pen().color());
        left += bar + random.between(0.2, 0.9);
    }
}

void drawPhoto(QPainter &painter, QRectF page, bool isNight, Random &random)
{
    const int top = isNight ? random.whole(5, 40) : random.whole(120, 220);
    QLinearGradient sky(0, 0, page.width() * random.between(-0.3, 0.3), page.height());
    sky.setColorAt(0, QColor(top / 2, top * 3 / 4, top));
    sky.setColorAt(0.6, isNight ? QColor(25, 22, 40) : QColor(230, 200, 170));
    sky.setColorAt(1, isNight ? QColor(12, 12, 16) : QColor(90, 110, 60));
    painter.fillRect(page, sky);
    painter.setPen(Qt::NoPen);
    const int count = random.whole(30, 90);
    for (int i = 0; i < count; ++i) {
        const int level = isNight ? random.whole(8, 60) : random.whole(30, 230);
        painter.setBrush(QColor(level, random.whole(level / 2, level),
                                random.whole(level / 3, level), random.whole(60, 200)));
        const QPointF at(random.between(0, page.width()),
                         page.height() * std::sqrt(random.between(0.05, 1)));
        const double size = random.between(1, 0.25 * page.width());
        QPainterPath path(at);
        path.cubicTo(at + QPointF(size, -size * random.between(0, 1)),
                     at + QPointF(size * random.between(0, 1), size),
                     at + QPointF(-size, size / 2));
        path.closeSubpath();
        painter.drawPath(path);
    }
    for (int i = 0; isNight && i < 12; ++i) {
        painter.setBrush(QColor(255, 240, random.whole(120, 220)));
        painter.drawEllipse(
            QPointF(random.between(0, page.width()), random.between(0.3, 0.9) * page.height()), 0.4,
            0.4);
    }
}

void drawStrokes(QPainter &painter, QRectF page, Random &random)
{
    QPen pen = painter.pen();
    const int count = random.whole(25, 80);
    for (int i = 0; i < count; ++i) {
        pen.setWidthF(random.between(0.2, 0.9));
        painter.setPen(pen);
        const auto point = [&] {
            return QPointF(page.width() * random.between(0.1, 0.9),
                           page.height() * random.between(0.1, 0.9));
        };
        QPainterPath path(point());
        path.cubicTo(point(), point(), point());
        painter.drawPath(path);
    }
}

/// Lines that run at about the same angle, as a chart has them: no sign of where up is.
void drawSlopes(QPainter &painter, QRectF page, Random &random)
{
    QPen pen = painter.pen();
    const double slope = std::tan(random.between(3, 12) * 0.01745) * (random.chance(0.5) ? 1 : -1);
    const int count = random.whole(2, 5);
    for (int i = 0; i < count; ++i) {
        pen.setWidthF(random.between(0.3, 0.8));
        painter.setPen(pen);
        const double y = page.height() * random.between(0.25, 0.75);
        const double length = page.width() * random.between(0.4, 0.8);
        const double bend = slope * random.between(0.5, 1.5);
        const double left = page.width() * 0.1;
        painter.drawLine(QPointF(left, y), QPointF(left + length, y + length * bend));
    }
    painter.drawEllipse(QPointF(page.width() * 0.5, page.height() * 0.3), 22, 14);
}

void draw(QPainter &painter, SheetContent content, QRectF page, Random &random)
{
    switch (content) {
    case SheetContent::text:
        return drawText(painter, page, random);
    case SheetContent::fewLines:
        return drawFewLines(painter, page, random);
    case SheetContent::table:
        return drawTable(painter, page, random);
    case SheetContent::verticalText:
        return drawVerticalText(painter, page, random);
    case SheetContent::receipt:
        return drawReceipt(painter, page, random);
    case SheetContent::photo:
        return drawPhoto(painter, page, false, random);
    case SheetContent::darkPhoto:
        return drawPhoto(painter, page, true, random);
    case SheetContent::drawing:
        return drawStrokes(painter, page, random);
    case SheetContent::slopes:
        return drawSlopes(painter, page, random);
    case SheetContent::blank:
        return;
    }
}

QImage contentMask(const QImage &picture, QRgb paper, bool isPhoto)
{
    QImage mask(picture.size(), QImage::Format_Grayscale8);
    mask.fill(isPhoto ? 255 : 0);
    for (int y = 0; y < picture.height() && !isPhoto; ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        uchar *to = mask.scanLine(y);
        for (int x = 0; x < picture.width(); ++x)
            to[x] = qGreen(paper) - qGreen(from[x]) > 40 ? 255 : 0;
    }
    return mask;
}

} // namespace

Sheet makeSheet(SheetContent content, QSizeF millimeters, int dpi, QRgb paper, Random &random)
{
    const double scale = dpi / millimetersPerInch;
    Sheet sheet;
    sheet.picture = QImage((millimeters * scale).toSize().expandedTo({1, 1}), QImage::Format_RGB32);
    sheet.picture.fill(paper);
    {
        QPainter painter(&sheet.picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        const int ink = random.whole(10, 90);
        painter.setPen(QColor(ink, ink, random.chance(0.2) ? 120 : ink));
        draw(painter, content, QRectF({0, 0}, millimeters), random);
    }
    const bool isPhoto = content == SheetContent::photo || content == SheetContent::darkPhoto;
    sheet.content = contentMask(sheet.picture, paper, isPhoto);
    sheet.hasLines = content == SheetContent::text || content == SheetContent::fewLines ||
                     content == SheetContent::table || content == SheetContent::verticalText ||
                     content == SheetContent::receipt;
    return sheet;
}

} // namespace corpus
