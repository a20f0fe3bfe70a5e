#include "bench/corpus/PageContents.h"

#include "bench/corpus/Writing.h"

#include <array>

namespace corpus {
namespace {

using Mark = Canvas::Mark;

const QColor black(25, 25, 28);
const QColor blue(35, 50, 140);
const QColor faintPencil(212, 212, 214); ///< A sixth darker than paper.

void print(Canvas &canvas, QRectF place, double points, QColor color = black)
{
    canvas.draw(Mark::ink, color, 0, paragraphs(canvas, place, points));
}

void heading(Canvas &canvas)
{
    const QString text = words(canvas.random(), 3);
    canvas.draw(Mark::ink, black, 0,
                line(text, {block(canvas).left(), canvas.height() * 0.09}, 18));
}

void printedPage(Canvas &canvas)
{
    heading(canvas);
    print(canvas, block(canvas), canvas.uniform(8.5, 12));
}

void boldBlocks(Canvas &canvas)
{
    const QRectF place = block(canvas);
    const QRectF bar(place.left(), place.top(), place.width(), 24);
    canvas.draw(Mark::ink, black, 0, [=](QPainter &painter) { painter.drawRect(bar); });
    canvas.scratch(QColor(245, 245, 245),
                   line(words(canvas.random(), 2), bar.topLeft() + QPointF(5, 10), 20));
    canvas.scratch(QColor(245, 245, 245),
                   line(words(canvas.random(), 6), bar.topLeft() + QPointF(5, 19), 9));
    canvas.draw(Mark::ink, black, 0,
                line(QStringLiteral("Agio 8"), {place.left(), place.top() + 75}, 120));
    canvas.draw(Mark::ink, black, 0, [=](QPainter &painter) {
        painter.drawEllipse(QPointF(place.right() - 20, place.top() + 60), 18, 18);
    });
    print(canvas, block(canvas, 0.5, 0.9), 10);
}

void table(Canvas &canvas)
{
    const QRectF place = block(canvas);
    const double step = 8;
    const int rows = int(place.height() / step / 1.5);
    canvas.draw(Mark::ink, QColor(205, 205, 205), 0, [=](QPainter &painter) {
        painter.drawRect(QRectF(place.topLeft(), QSizeF(place.width(), step)));
    });
    for (int row = 0; row <= rows; ++row) {
        const double y = place.top() + row * step;
        canvas.draw(Mark::ink, black, row < 2 ? 0.35 : 0.12, [=](QPainter &painter) {
            painter.drawLine(QPointF(place.left(), y), QPointF(place.right(), y));
        });
        if (row == rows)
            break;
        for (int column = 0; column < 4; ++column) {
            const QPointF at(place.left() + 2 + column * place.width() / 4, y + step * 0.7);
            const QString text = column == 0 || row == 0
                                     ? words(canvas.random(), 1)
                                     : QString::number(canvas.uniform(0, 9999), 'f', 2);
            canvas.draw(Mark::ink, black, 0, line(text, at, 9.5));
        }
    }
}

void drawing(Canvas &canvas)
{
    const QRectF place = block(canvas);
    for (int i = 0; i < 14; ++i) {
        const QPointF from(canvas.uniform(place.left(), place.right()),
                           canvas.uniform(place.top(), place.bottom()));
        const QPointF to(canvas.uniform(place.left(), place.right()),
                         canvas.uniform(place.top(), place.bottom()));
        const double radius = canvas.uniform(5, 40);
        const bool isLine = i % 2 == 0;
        canvas.draw(Mark::ink, black, canvas.uniform(0.1, 0.3), [=](QPainter &painter) {
            painter.setBrush(QBrush());
            if (isLine)
                painter.drawLine(from, to);
            else
                painter.drawEllipse(from, radius, radius);
        });
    }
}

void pencilLines(Canvas &canvas, QRectF place, QColor color)
{
    for (double y = place.top() + 6; y < place.bottom(); y += 11) {
        const QPointF start(place.left(), y);
        canvas.draw(Mark::ink, color, canvas.uniform(0.4, 0.6),
                    handwriting(canvas, start, 2.6, std::max(1, int(place.width() / 24))));
    }
    canvas.roughen(0.6);
}

void thermal(Canvas &canvas)
{
    const int level = 105 + int(canvas.random().bounded(90));
    const QRectF place(4, 8, canvas.width() - 8, canvas.height() - 20);
    canvas.draw(Mark::ink, QColor(level, level, level + 8), 0,
                paragraphs(canvas, place, 8.5, QStringLiteral("Liberation Mono")));
}

void form(Canvas &canvas)
{
    heading(canvas);
    const QRectF place = block(canvas, 0.12, 0.8);
    for (double y = place.top(); y < place.bottom(); y += 16) {
        canvas.draw(Mark::ink, black, 0, line(words(canvas.random(), 2), {place.left(), y}, 9));
        canvas.draw(Mark::ink, black, 0.15, [=](QPainter &painter) {
            painter.drawLine(QPointF(place.left() + 50, y), QPointF(place.right(), y));
        });
        canvas.draw(Mark::ink, faintPencil, 0.5,
                    handwriting(canvas, {place.left() + 54, y - 1.5}, 2.5, 4));
    }
}

void pageNumber(Canvas &canvas)
{
    const int number = 1 + int(canvas.random().bounded(40));
    const bool isDashed = canvas.random().bounded(3) == 0;
    const QString text = isDashed ? QStringLiteral("– %1 –").arg(number) : QString::number(number);
    const double x = canvas.random().bounded(2) == 0 ? canvas.width() / 2 : canvas.width() - 22;
    const double y = canvas.height() - canvas.uniform(8, 20);
    canvas.draw(Mark::ink, black, 0, line(text, {x, y}, canvas.uniform(8, 10)));
}

void shortNote(Canvas &canvas, QColor color, double width)
{
    const QPointF start(canvas.uniform(10, canvas.width() * 0.6),
                        canvas.uniform(20, canvas.height() - 20));
    canvas.draw(color == blue ? Mark::coloredInk : Mark::ink, color, width,
                handwriting(canvas, start, canvas.uniform(2, 3), 2));
}

void stamp(Canvas &canvas)
{
    printedPage(canvas);
    const QPointF at(canvas.uniform(20, canvas.width() - 60),
                     canvas.uniform(0.2, 0.8) * canvas.height());
    const QColor red = canvas.random().bounded(2) == 0 ? QColor(205, 45, 60) : QColor(70, 60, 170);
    canvas.draw(Mark::coloredInk, red, 0.6, [=](QPainter &painter) {
        painter.setBrush(QBrush());
        painter.drawRoundedRect(QRectF(at, QSizeF(34, 13)), 2, 2);
    });
    canvas.draw(Mark::coloredInk, red, 0, line(QStringLiteral("PAID"), at + QPointF(4.5, 10), 26));
}

void signature(Canvas &canvas)
{
    heading(canvas);
    print(canvas, block(canvas, 0.12, 0.7), 10.5);
    canvas.draw(Mark::coloredInk, blue, 0.45,
                handwriting(canvas,
                            {canvas.uniform(0.12, 0.5) * canvas.width(), canvas.height() * 0.8},
                            4.5, 2));
}

void highlighter(Canvas &canvas)
{
    printedPage(canvas);
    static const std::array colors{QColor(255, 245, 90), QColor(255, 170, 200),
                                   QColor(160, 245, 150)};
    const QColor color = colors[canvas.random().bounded(3U)];
    for (int i = 0; i < 3; ++i) {
        const QRectF bar(canvas.uniform(0.12, 0.5) * canvas.width(),
                         canvas.uniform(0.15, 0.85) * canvas.height(),
                         canvas.uniform(0.12, 0.35) * canvas.width(), 5);
        canvas.draw(Mark::wash, color, 0, [=](QPainter &painter) { painter.drawRect(bar); });
    }
}

void photograph(Canvas &canvas, bool isColored)
{
    heading(canvas);
    print(canvas, block(canvas, 0.1, 0.35), 10);
    const QRectF place = block(canvas, 0.4, canvas.uniform(0.55, 0.75));
    const double width = canvas.uniform(0.4, 1) * place.width();
    canvas.drawPhotograph(QRectF(place.topLeft(), QSizeF(width, place.height())), isColored);
    print(canvas, block(canvas, 0.8, 0.92), 9);
}

} // namespace

void drawContent(Canvas &canvas, Content content)
{
    switch (content) {
    case Content::print:
        printedPage(canvas);
        break;
    case Content::smallPrint:
        print(canvas, block(canvas), 6);
        break;
    case Content::boldBlocks:
        boldBlocks(canvas);
        break;
    case Content::table:
        table(canvas);
        break;
    case Content::drawing:
        drawing(canvas);
        break;
    case Content::pencil:
        pencilLines(canvas, block(canvas), faintPencil);
        break;
    case Content::thermal:
        thermal(canvas);
        break;
    case Content::form:
        form(canvas);
        break;
    case Content::pageNumber:
        pageNumber(canvas);
        break;
    case Content::shortNote:
        shortNote(canvas, black, 0.4);
        break;
    case Content::blueNote:
        shortNote(canvas, blue, 0.4);
        break;
    case Content::shortPencil:
        shortNote(canvas, faintPencil, 0.5);
        canvas.roughen(0.6);
        break;
    case Content::inkNotes:
        for (int row = 0; row < 12; ++row)
            canvas.draw(Mark::coloredInk, blue, 0.45,
                        handwriting(canvas,
                                    {canvas.width() / 9, canvas.height() * (0.15 + 0.06 * row)},
                                    2.8, 4));
        break;
    case Content::stamp:
        stamp(canvas);
        break;
    case Content::signature:
        signature(canvas);
        break;
    case Content::highlighter:
        highlighter(canvas);
        break;
    case Content::photograph:
        photograph(canvas, true);
        break;
    case Content::greyPhotograph:
        photograph(canvas, false);
        break;
    case Content::wholePhotograph:
        canvas.drawPhotograph(QRectF(0, 0, canvas.width(), canvas.height()), true);
        break;
    case Content::blank:
        break;
    }
}

} // namespace corpus
