#pragma once

#include <QByteArray>

namespace velmor {

/// `value` as PDF writes numbers: a decimal point in every locale, never an exponent, five digits
/// behind the point without trailing zeros.
[[nodiscard]] inline QByteArray pdfNumber(double value)
{
    QByteArray digits = QByteArray::number(value, 'f', 5);
    while (digits.endsWith('0'))
        digits.chop(1);
    if (digits.endsWith('.'))
        digits.chop(1);
    return digits == "-0" ? QByteArray("0") : digits;
}

} // namespace velmor
