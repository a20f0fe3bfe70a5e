#include "scanengine/drivers/NaturalOrder.h"

namespace scanengine {

namespace {

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// The digits at the front of `text` without leading zeros; moves `text` behind them.
QStringView takeNumber(QStringView &text)
{
    qsizetype end = 0;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    QStringView digits = text.first(end);
    text = text.sliced(end);
    while (!digits.isEmpty() && digits.front() == u'0')
        digits = digits.sliced(1);
    return digits;
}

/// Negative, zero or positive as `left` is the smaller, an equal or the larger number.
qsizetype compareNumbers(QStringView left, QStringView right)
{
    if (left.size() != right.size())
        return left.size() - right.size();
    return left.compare(right);
}

} // namespace

bool naturallyBefore(QStringView left, QStringView right)
{
    QStringView restOfLeft = left;
    QStringView restOfRight = right;
    while (!restOfLeft.isEmpty() && !restOfRight.isEmpty()) {
        if (isDigit(restOfLeft.front()) && isDigit(restOfRight.front())) {
            const QStringView number = takeNumber(restOfLeft);
            const qsizetype order = compareNumbers(number, takeNumber(restOfRight));
            if (order != 0)
                return order < 0;
            continue;
        }
        const QChar a = restOfLeft.front().toCaseFolded();
        const QChar b = restOfRight.front().toCaseFolded();
        if (a != b)
            return a < b;
        restOfLeft = restOfLeft.sliced(1);
        restOfRight = restOfRight.sliced(1);
    }
    if (restOfLeft.isEmpty() != restOfRight.isEmpty())
        return restOfLeft.isEmpty();
    return left < right;
}

} // namespace scanengine
