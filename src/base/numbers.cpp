// SPDX-License-Identifier: MIT
#include "numbers.h"

#include "fault.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

template <typename Integer>
Integer held(double value)
{
    const double whole = roundHalfToEven(value);
    const bool fits = whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max();
    if (!fits) // also when there is no number left, because it was beyond floating point
        throw Fault(Fault::Overflow);
    return static_cast<Integer>(whole);
}

} // namespace

bool isNumeric(QStringView text)
{
    static const QRegularExpression pattern(uR"(\A *[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)? *\z)"_s);
    return pattern.match(text).hasMatch();
}

double toNumber(QStringView text)
{
    if (!isNumeric(text))
        throw Fault(Fault::TypeMismatch);
    return text.trimmed().toDouble();
}

qint16 toInteger16(QStringView text)
{
    return held<qint16>(toNumber(text));
}

qint32 toInteger32(QStringView text)
{
    return held<qint32>(toNumber(text));
}

qint16 leadingNumber(QStringView text)
{
    static const QRegularExpression digits(uR"(\A *([+-]?[0-9]+))"_s);
    return held<qint16>(digits.match(text).capturedView(1).toDouble());
}

qint16 product16(qint16 one, qint16 other)
{
    return held<qint16>(static_cast<double>(one) * other);
}

double roundHalfToEven(double value)
{
    return value - std::remainder(value, 1.0);
}
