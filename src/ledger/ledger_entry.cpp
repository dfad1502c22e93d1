// SPDX-License-Identifier: MIT
#include "ledger_entry.h"

#include "base/wire_text.h"
#include "known_passwords.h"
#include "rcon/refusals.h"
#include "rcon/reply_piece.h"
#include "rcon/request_size.h"
#include "rcon/shown_command.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestTaken = 8192;
constexpr qsizetype headerSize = 4;

// Each character without a byte becomes one more question mark.
bool hasLostCharacters(const SentCopy &copy)
{
    return copy.datagram.count('?') > copy.comm.count(u'?') + copy.password.count(u'?');
}

QString hiddenCommand(const SentCopy &copy, const KnownPasswords &passwords)
{
    QString command = starredCommand(copy.comm, copy.password);
    passwords.star(command);
    return command;
}

/// As many characters of `command` as the server reads of the datagram.
std::optional<QString> readPartOf(const SentCopy &copy, const QString &command)
{
    if (copy.datagram.size() <= headerSize + longestRequest)
        return std::nullopt;
    const qsizetype before = requestSize({}, copy.password);
    const qsizetype read = std::max<qsizetype>(longestRequest - before, 0);
    return command.left(fromAnsi(copy.datagram.mid(headerSize + before, read)).size());
}

} // namespace

LedgerEntry::LedgerEntry(const SentCopy &copy, const KnownPasswords &passwords, const QDateTime &time_, Time sent_)
    : number(copy.number),
      time(time_),
      command(hiddenCommand(copy, passwords)),
      sent(sent_),
      isUnreadable(hasLostCharacters(copy)),
      readPart(readPartOf(copy, command))
{
}

void LedgerEntry::take(const CameDatagram &datagram, const KnownPasswords &passwords, Time at)
{
    if (datagrams == 0) {
        firstAnswer = std::max(at - sent, Time::zero());
        isLate = isOver && (isAwaited || *firstAnswer > inTime);
    }
    ++datagrams;
    bytes += datagram.size;
    isCut = isCut || datagram.size > largestTaken;
    addText(datagram.text, passwords);
    judgeWords(datagram.text);
    isLosing = datagram.size == ReplyPiece::losingSize;
    if (isLosing)
        passwords.starLosingEnd(reply);
}

// A password can be parted by the border between two datagrams.
void LedgerEntry::addText(const QString &text, const KnownPasswords &passwords)
{
    if (isReplyForgotten)
        return;
    QString added = text.left(longestKeptReply - std::min(reply.size(), longestKeptReply));
    QString tail = reply.last(std::min(reply.size(), passwords.longest()));
    if (!isUsualRefusal(added)) // asterisks in its usual words would give a password away that is one of them
        passwords.starNext(tail, added, isLosing);
    reply.chop(tail.size());
    reply += tail + added;
}

// By the words as they came, since asterisks can cover those that matter. They are not kept: the first ones decide, but
// a refusal that goes on with something else is none. A line that was parted, or that repeats a command with asterisks
// in it, is known by what is kept.
void LedgerEntry::judgeWords(QStringView text)
{
    constexpr qsizetype longestLine = 2000; // that says more than that the server has answered
    const Verdict said = verdictOfReply(command, text);
    if (words == Verdict::None || words == Verdict::Acknowledged)
        words = said;
    else if (words == Verdict::PasswordRefused && said != Verdict::PasswordRefused && said != Verdict::Acknowledged)
        words = Verdict::Answered;
    if (words == Verdict::Answered && !isReplyForgotten)
        words = verdictOfReply(command, QStringView(reply).first(std::min(reply.size(), longestLine)));
}

void LedgerEntry::hide(const KnownPasswords &passwords)
{
    passwords.star(command);
    if (!isUsualRefusal(reply))
        passwords.star(reply);
    if (readPart)
        passwords.star(*readPart);
}

Verdict LedgerEntry::judged() const
{
    if (isCut)
        return Verdict::Cut;
    if (readPart)
        return Verdict::TooLong;
    if (isUnreadable)
        return Verdict::Unreadable;
    if (isLate)
        return Verdict::Late;
    if (datagrams > 0)
        return words;
    return isUnanswered ? Verdict::Silent : Verdict::None;
}
