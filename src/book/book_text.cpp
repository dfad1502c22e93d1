// SPDX-License-Identifier: MIT
#include "book_text.h"

#include "base/colour_codes.h"

using namespace Qt::StringLiterals;

namespace {

QString withoutControls(QString text)
{
    text.removeIf([](QChar each) { return each.category() == QChar::Other_Control; });
    return text;
}

} // namespace

QString cleanName(const QString &name)
{
    return withoutControls(stripcolour(name)).trimmed();
}

QString cutName(const QString &name)
{
    constexpr qsizetype longest = 64; // characters; the game has none of more than 32
    return name.size() <= longest ? name : name.left(longest) + u"..."_s;
}

QString shownName(const QString &name)
{
    return cutName(cleanName(name));
}

QString foldedText(const QString &text)
{
    return withoutControls(text).normalized(QString::NormalizationForm_C).toCaseFolded();
}

QString searchKey(const QString &text)
{
    return foldedText(stripcolour(text));
}

QString withoutPort(const QString &address)
{
    const QString text = address.trimmed();
    const qsizetype bracket = text.indexOf(u']');
    if (text.startsWith(u'[') && bracket > 0)
        return text.sliced(1, bracket - 1);
    return text.count(u':') == 1 ? text.first(text.indexOf(u':')) : text;
}
