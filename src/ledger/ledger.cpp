// SPDX-License-Identifier: MIT
#include "ledger.h"

#include "ledger_text.h"
#include "rcon/datagram_header.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostKept = 8'000'000; // characters of replies: a thousand lists of players are a fifth of that

// Answers to the public queries, whoever has asked them.
bool isPublic(const CameDatagram &datagram)
{
    static const QByteArray status = datagramHeader + "statusResponse";
    static const QByteArray info = datagramHeader + "infoResponse";
    return datagram.head.startsWith(status) || datagram.head.startsWith(info);
}

} // namespace

void Ledger::sent(const SentCopy &copy, const QDateTime &time, Time at)
{
    const bool isSetNew = known.addFrom(copy.comm);
    if (known.add(copy.password) || isSetNew)
        hideInAll();
    if (rowOf(copy.number) < 0)
        add(LedgerEntry(copy, known, time, at));
    const int row = rowOf(copy.number);
    ++entries[row].copies;
    receivers.sent(copy.number, entries.at(row).command, at);
    judge(row);
}

void Ledger::hide(const QString &password)
{
    if (known.add(password))
        hideInAll();
}

// It may have been typed before without being known as one.
void Ledger::hideInAll()
{
    for (LedgerEntry &entry : entries)
        entry.hide(known);
    if (!entries.isEmpty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void Ledger::add(const LedgerEntry &entry)
{
    if (rowCount() == mostEntries) {
        beginRemoveRows({}, 0, 0);
        kept -= entries.first().reply.size();
        entries.removeFirst();
        endRemoveRows();
    }
    beginInsertRows({}, rowCount(), rowCount());
    entries.append(entry);
    endInsertRows();
}

void Ledger::came(const CameDatagram &datagram, Time at)
{
    if (isPublic(datagram))
        return;
    const int row = rowOf(receivers.receiver(datagram.text, datagram.size, at).value_or(-1));
    if (row < 0)
        return;
    LedgerEntry &entry = entries[row];
    const qsizetype before = entry.reply.size();
    entry.take(datagram, known, at);
    kept += entry.reply.size() - before;
    pending.removeOne(entry.number);
    judge(row);
    makeRoom();
}

void Ledger::over(int number, bool isAwaited)
{
    const int row = rowOf(number);
    if (row < 0)
        return;
    LedgerEntry &entry = entries[row];
    entry.isOver = true;
    entry.isAwaited = isAwaited;
    if (entry.datagrams > 0)
        return;
    if (!isAwaited)
        pending.append(number);
    entry.isUnanswered = isAwaited;
    judge(row);
}

std::optional<Ledger::Time> Ledger::nextSilence() const
{
    for (const int number : pending) {
        if (const int row = rowOf(number); row >= 0)
            return entries.at(row).sent + silentAfter;
    }
    return std::nullopt;
}

void Ledger::judgeSilence(Time at)
{
    for (auto next = nextSilence(); next && *next <= at; next = nextSilence()) {
        const int row = rowOf(pending.takeFirst());
        if (row < 0)
            continue;
        entries[row].isUnanswered = true;
        judge(row);
    }
}

void Ledger::judge(int row)
{
    LedgerEntry &entry = entries[row];
    const Verdict before = std::exchange(entry.verdict, entry.judged());
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    if (entry.verdict != before)
        emit judged(entry);
}

// Rows stay, and so do their verdicts.
void Ledger::makeRoom()
{
    for (int row = 0; kept > mostKept && row < rowCount() - 1; ++row) {
        LedgerEntry &entry = entries[row];
        if (entry.reply.isEmpty())
            continue;
        kept -= entry.reply.size();
        entry.reply = QString();
        entry.isReplyForgotten = true;
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    }
}

int Ledger::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(entries.size());
}

int Ledger::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : LedgerColumn::Count;
}

QVariant Ledger::data(const QModelIndex &index, int role) const
{
    const bool isText = index.column() == LedgerColumn::Time || index.column() == LedgerColumn::Command ||
                        index.column() == LedgerColumn::Verdict;
    if (role == Qt::DisplayRole)
        return ledgerCell(entries.at(index.row()), static_cast<LedgerColumn::Column>(index.column()));
    if (role == Qt::TextAlignmentRole && !isText)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant Ledger::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::ToolTipRole && section == LedgerColumn::FirstAnswer)
        return u"Milliseconds between the first copy and the first datagram"_s;
    if (role != Qt::DisplayRole)
        return {};
    return ledgerHeaders().value(section);
}

// Numbers grow, but not by one.
int Ledger::rowOf(int number) const
{
    const auto found = std::ranges::lower_bound(entries, number, {}, &LedgerEntry::number);
    return found == entries.end() || found->number != number ? -1 : static_cast<int>(found - entries.begin());
}
