// SPDX-License-Identifier: MIT
#include "command_words.h"

#include <QStringView>

using namespace Qt::StringLiterals;

namespace {

bool parts(QChar character)
{
    return character <= u' ';
}

QStringView firstLine(QStringView text)
{
    const qsizetype end = text.indexOf(u'\n');
    return end < 0 ? text : text.first(end);
}

qsizetype endOfBareWord(QStringView rest)
{
    qsizetype end = 0;
    while (end < rest.size() && !parts(rest.at(end)) && rest.at(end) != u'"')
        ++end;
    return end;
}

} // namespace

QStringList commandWords(const QString &line)
{
    QStringList words;
    QStringView rest = firstLine(line);
    while (!rest.isEmpty()) {
        if (parts(rest.front())) {
            rest = rest.sliced(1);
        } else if (rest.front() == u'"') {
            const qsizetype closing = rest.indexOf(u'"', 1);
            const qsizetype end = closing < 0 ? rest.size() : closing;
            words.append(rest.sliced(1, end - 1).toString());
            rest = closing < 0 ? QStringView() : rest.sliced(closing + 1);
        } else {
            const qsizetype end = endOfBareWord(rest);
            words.append(rest.first(end).toString());
            rest = rest.sliced(end);
        }
    }
    return words;
}

QString joinedFrom(const QStringList &words, qsizetype first)
{
    return words.mid(first).join(u' ');
}

bool holdsPassword(const QString &dvar)
{
    return dvar.contains("password"_L1, Qt::CaseInsensitive);
}

QString withoutSecrets(const QString &line)
{
    const QStringList words = commandWords(line);
    for (qsizetype name = 0; name < qMin<qsizetype>(words.size(), 2); ++name) {
        if (holdsPassword(words.at(name)) && name + 1 < words.size())
            return words.first(name + 1).join(u' ') + u" (not shown)"_s;
    }
    return firstLine(line).toString();
}
