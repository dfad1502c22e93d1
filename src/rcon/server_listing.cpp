// SPDX-License-Identifier: MIT
#include "server_listing.h"

#include "words_file.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestWord = 64;

bool isLetter(QChar each)
{
    return (each >= u'a' && each <= u'z') || (each >= u'A' && each <= u'Z') || each == u'_';
}

bool isOfWord(QChar each)
{
    return isLetter(each) || (each >= u'0' && each <= u'9') || each == u'-' || each == u'.';
}

/// The places in a reply at which something may be missing, the first one first.
QList<qsizetype> gapsIn(const QList<ReplyPiece> &pieces)
{
    QList<qsizetype> gaps;
    for (qsizetype piece = 1; piece < pieces.size(); ++piece) {
        if (pieces.at(piece - 1).mayLackLast || pieces.at(piece - 1).isCut)
            gaps.append(pieces.at(piece).begin);
    }
    return gaps;
}

QStringView variableIn(QStringView line)
{
    const qsizetype quote = line.indexOf(u'"');
    if (quote < 0 || !line.endsWith(u'"') || quote == line.size() - 1)
        return {};
    const QStringView before = line.first(quote).trimmed();
    const qsizetype name = before.lastIndexOf(u' ') + 1;
    return areFlags(before.first(name)) ? before.sliced(name) : QStringView();
}

/// What `nameIn` finds in each undamaged line that has its end, no more than are taken of one server. Lines and gaps
/// are in order and each is looked at once: a hostile server sends hundreds of thousands.
template <typename NameIn>
QStringList namesIn(const QString &reply, const QList<ReplyPiece> &pieces, const NameIn &nameIn)
{
    QStringList names;
    const QList<qsizetype> gaps = gapsIn(pieces);
    qsizetype next = 0; // the first gap that is not before the line
    for (qsizetype begin = 0, end = reply.indexOf(u'\n'); end >= 0 && names.size() < ServerWords::most;
         begin = end + 1, end = reply.indexOf(u'\n', begin)) {
        while (next < gaps.size() && gaps.at(next) < begin)
            ++next;
        const bool isDamaged = next < gaps.size() && gaps.at(next) <= end;
        QStringView line = QStringView(reply).sliced(begin, end - begin);
        if (line.endsWith(u'\r'))
            line.chop(1);
        const QStringView name = nameIn(line);
        if (!isDamaged && isWord(name))
            names.append(name.toString());
    }
    return names;
}

/// True for "315 total dvars" and the like.
bool isCount(QStringView line, QLatin1StringView of)
{
    const QStringView number = line.first(std::max<qsizetype>(line.indexOf(u' '), 0));
    return !number.isEmpty() && std::ranges::all_of(number, [](QChar each) { return each.isDigit(); }) &&
           line.sliced(number.size() + 1) == of;
}

} // namespace

bool isWord(QStringView text)
{
    return !text.isEmpty() && text.size() <= longestWord && isLetter(text.front()) &&
           std::ranges::all_of(text, isOfWord);
}

bool areFlags(QStringView text)
{
    return std::ranges::all_of(text, [](QChar each) { return each == u' ' || u"SURIALC"_s.contains(each); });
}

QStringList listedVariables(const QString &reply, const QList<ReplyPiece> &pieces)
{
    return namesIn(reply, pieces, variableIn);
}

QStringList listedCommands(const QString &reply, const QList<ReplyPiece> &pieces)
{
    return namesIn(reply, pieces, [](QStringView line) { return line.trimmed(); });
}

bool isWholeListing(const QString &reply)
{
    if (!reply.endsWith(u'\n'))
        return false;
    const QStringView lines = QStringView(reply).chopped(1);
    const QStringView last = lines.sliced(lines.lastIndexOf(u'\n') + 1).trimmed();
    return isCount(last, "total dvars"_L1) || isCount(last, "dvar indexes"_L1) || isCount(last, "commands"_L1) ||
           last.startsWith("Unknown command"_L1);
}
