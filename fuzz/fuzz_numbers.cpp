// SPDX-License-Identifier: MIT
#include "base/numbers.h"
#include "base/wire_text.h"
#include "fuzz.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Walks through a text character by character.
struct Walk {
    QStringView text;
    qsizetype at = 0;

    [[nodiscard]] char16_t here() const { return at < text.size() ? text.at(at).unicode() : u'\0'; }
    [[nodiscard]] bool onDigit() const { return here() >= u'0' && here() <= u'9'; }
    bool skip(QStringView any)
    {
        if (at == text.size() || !any.contains(text.at(at)))
            return false;
        ++at;
        return true;
    }
    void skipBlanks()
    {
        while (skip(u" "))
            ;
    }
    qsizetype skipDigits()
    {
        const qsizetype start = at;
        while (onDigit())
            ++at;
        return at - start;
    }
};

bool looksNumeric(QStringView text)
{
    Walk walk{text};
    walk.skipBlanks();
    walk.skip(u"+-");
    qsizetype digits = walk.skipDigits();
    if (walk.skip(u"."))
        digits += walk.skipDigits();
    if (digits == 0)
        return false;
    if (walk.skip(u"eE")) {
        walk.skip(u"+-");
        if (walk.skipDigits() == 0)
            return false;
    }
    walk.skipBlanks();
    return walk.at == text.size();
}

template <typename Integer, typename Convert>
void holdTo(double value, const Convert &convert)
{
    const double whole = std::nearbyint(value); // half to even, as long as nobody changes the rounding mode
    const bool fits = whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max();
    if (!fits)
        require(faultOf(convert) == Fault::Overflow, "a number that does not fit is an overflow");
    else
        require(convert() == whole, "a number is rounded half to even");
}

void convert(const QString &text)
{
    const auto to16 = [&] { return toInteger16(text); };
    const auto to32 = [&] { return toInteger32(text); };
    require(isNumeric(text) == looksNumeric(text), "blanks, a sign, decimals and an exponent make a number");
    if (!isNumeric(text)) {
        require(faultOf([&] { (void)toNumber(text); }) == Fault::TypeMismatch, "what is no number is a type mismatch");
        require(faultOf(to16) == Fault::TypeMismatch, "what is no number is no 16-bit number");
        require(faultOf(to32) == Fault::TypeMismatch, "what is no number is no 32-bit number");
        return;
    }
    const double value = toNumber(text);
    require(value == std::strtod(text.toLatin1().constData(), nullptr), "the value is the nearest to what is written");
    holdTo<qint16>(value, to16);
    holdTo<qint32>(value, to32);
}

void readDigits(const QString &text)
{
    constexpr int beyond = 100'000;
    Walk walk{text};
    walk.skipBlanks();
    const bool negative = walk.here() == u'-';
    walk.skip(u"+-");
    int value = 0;
    for (; walk.onDigit(); ++walk.at)
        value = std::min(value * 10 + (walk.here() - u'0'), beyond);
    holdTo<qint16>(negative ? -value : value, [&] { return leadingNumber(text); });
}

qint16 number16(const QByteArray &input, qsizetype at)
{
    const auto byte = [&](qsizetype index) { return static_cast<uchar>(index < input.size() ? input.at(index) : 0); };
    return static_cast<qint16>(byte(at) * 256 + byte(at + 1));
}

} // namespace

void fuzz(const QByteArray &input)
{
    for (const QString &text : {fromAnsi(input), QString::fromUtf8(input)}) {
        convert(text);
        readDigits(text);
    }
    const qint16 one = number16(input, 0);
    const qint16 other = number16(input, 2);
    holdTo<qint16>(qint32{one} * other, [&] { return product16(one, other); });
}
