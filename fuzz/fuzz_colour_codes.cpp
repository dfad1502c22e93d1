// SPDX-License-Identifier: MIT
#include "base/colour_codes.h"
#include "base/wire_text.h"
#include "fuzz.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

void fuzz(const QByteArray &input)
{
    static const QRegularExpression code(u"\\^[0-9]"_s);
    const QString name = fromAnsi(input);
    require(stripcolour(name) == QString(name).remove(code), "carets with a digit go, all else stays");
}
