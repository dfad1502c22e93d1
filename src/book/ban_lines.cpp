// SPDX-License-Identifier: MIT
#include "ban_lines.h"

#include "base/guid.h"
#include "base/wire_text.h"
#include "book_text.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestLine = 1000; // bytes
constexpr qsizetype longestGuid = 20;   // digits of the largest number of 64 bits

/// Whether a server can have banned it.
bool isBanned(const QString &guid)
{
    const qsizetype digits = guid.size() - (guid.startsWith(u'-') ? 1 : 0);
    return isGuid(guid) && digits <= longestGuid && !isNobodysGuid(guid);
}

std::optional<BookBan> readLine(QByteArrayView line)
{
    const qsizetype blank = line.indexOf(' ');
    const QString guid = QString::fromLatin1(line.first(std::max(blank, qsizetype{0})));
    if (line.size() > longestLine || !isBanned(guid))
        return std::nullopt;
    const QString name = fromAnsi(line.sliced(blank + 1).toByteArray()).trimmed();
    if (std::ranges::any_of(name, [](QChar each) { return each.category() == QChar::Other_Control; }))
        return std::nullopt;
    BookBan ban;
    ban.guid = guid;
    ban.name = name;
    ban.state = BookBan::Imported;
    return ban;
}

bool isRefusal(const QString &verdict)
{
    constexpr std::array refusals{"password refused"_L1, "unknown command"_L1, nobodyVerdict, "usage"_L1,
                                  guidZeroVerdict};
    return std::ranges::find(refusals, verdict) != refusals.end();
}

} // namespace

BookBan::State stateOfBan(const BookBan &ban, const BanFacts &facts)
{
    if (facts.isLifted)
        return BookBan::Lifted;
    if (facts.isImported)
        return BookBan::Imported;
    const bool isOfNobody = !ban.guid.isEmpty() && isNobodysGuid(ban.guid);
    if (isRefusal(ban.verdict) || isOfNobody)
        return BookBan::Refused;
    return facts.isTemporary ? BookBan::Temporary : BookBan::InForce;
}

bool isInBanFile(const BookBan &ban)
{
    return ban.state == BookBan::InForce || ban.state == BookBan::Imported;
}

QString nameInBanFile(const BookBan &ban)
{
    return ban.state == BookBan::Imported ? ban.name : cleanName(ban.name);
}

bool isSameServer(const QString &one, const QString &other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

QPair<QString, QString> keyOfBan(const BookBan &ban)
{
    return {ban.guid, foldedText(nameInBanFile(ban))};
}

QList<BookBan> bansLiftedWith(const QList<BookBan> &bans, const QString &server, const QString &name)
{
    const QString wanted = foldedText(name);
    QList<BookBan> lifted;
    for (const BookBan &ban : bans) {
        const bool isThere =
            isSameServer(ban.server, server) || (ban.server.isEmpty() && ban.state == BookBan::Imported);
        if (isInBanFile(ban) && isThere && keyOfBan(ban).second == wanted)
            lifted.append(ban);
    }
    return lifted;
}

BanLines readBanLines(const QByteArray &file)
{
    BanLines read;
    const QByteArray byteOrderMark = "\xEF\xBB\xBF"; // that an editor has put before the first line
    for (qsizetype begin = file.startsWith(byteOrderMark) ? byteOrderMark.size() : 0; begin < file.size();) {
        const qsizetype found = file.indexOf('\n', begin);
        const qsizetype end = found < 0 ? file.size() : found;
        QByteArrayView line = QByteArrayView(file).sliced(begin, end - begin);
        if (line.endsWith('\r'))
            line.chop(1);
        begin = end + 1;
        if (line.trimmed().isEmpty())
            continue;
        if (const std::optional<BookBan> ban = readLine(line))
            read.bans.append(*ban);
        else
            ++read.unreadable;
    }
    return read;
}

QByteArray banLines(const QList<BookBan> &bans)
{
    QByteArray lines;
    QSet<QPair<QString, QString>> written;
    for (const BookBan &ban : bans) {
        if (!isInBanFile(ban) || isNobodysGuid(ban.guid) || written.contains(keyOfBan(ban)))
            continue;
        written.insert(keyOfBan(ban));
        lines += ban.guid.toLatin1() + ' ' + toAnsi(nameInBanFile(ban)) + '\n';
    }
    return lines;
}
