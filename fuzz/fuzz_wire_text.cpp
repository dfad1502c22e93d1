// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace {

QString withoutBlanks(QString text)
{
    return text.remove(u' ');
}

void squeeze(const QString &text)
{
    const QString squeezed = squeezeBlanks(text);
    require(!squeezed.contains(u"  "_s), "squeezed text never has two blanks in a row");
    require(withoutBlanks(squeezed) == withoutBlanks(text), "squeezing takes blanks and nothing else");
    require(squeezed.startsWith(u' ') == text.startsWith(u' ') && squeezed.endsWith(u' ') == text.endsWith(u' '),
            "a run of blanks leaves one");
    require(squeezed.split(u' ', Qt::SkipEmptyParts) == text.split(u' ', Qt::SkipEmptyParts), "words stay apart");
}

void trim(const QString &text)
{
    const QString trimmed = trimBlanks(text);
    require(!trimmed.startsWith(u' ') && !trimmed.endsWith(u' '), "trimmed text has no blank at its ends");
    const qsizetype start = text.indexOf(trimmed);
    require(start >= 0, "trimming changes nothing inside");
    const QString rest = text.first(start) + text.sliced(start + trimmed.size());
    require(withoutBlanks(rest).isEmpty(), "trimming takes blanks and nothing else");
}

} // namespace

void fuzz(const QByteArray &input)
{
    const QString text = fromAnsi(input);
    require(text.size() == input.size(), "every byte is one character");
    require(toAnsi(text) == input, "bytes that have become text become the same bytes again");
    squeeze(text);
    trim(text);

    // What a person types or pastes has any characters, also halves of those that need two units.
    const QString typed(reinterpret_cast<const QChar *>(input.constData()), input.size() / 2);
    require(toAnsi(typed).size() == typed.toUcs4().size(), "every character is one byte");
    squeeze(typed);
    trim(typed);
}
