// SPDX-License-Identifier: MIT
#pragma once

#include "known_passwords.h"
#include "ledger_entry.h"
#include "receivers.h"

#include <QAbstractTableModel>
#include <QList>

#include <optional>

/// The columns of the ledger.
namespace LedgerColumn {
enum Column { Time, Command, Copies, FirstAnswer, Datagrams, Bytes, Verdict, Count };
}

/// What became of the last commands, the newest at the end. It is told what has gone out and what has come, and when.
class Ledger final : public QAbstractTableModel {
    Q_OBJECT

public:
    using Time = LedgerEntry::Time;

    static constexpr int mostEntries = 1000;

    using QAbstractTableModel::QAbstractTableModel;

    void sent(const SentCopy &copy, const QDateTime &time, Time at);
    void came(const CameDatagram &datagram, Time at);
    /// A password that is not to be seen in any entry.
    void hide(const QString &password);
    /// The exchange of that number has ended; `isAwaited` as in `Exchange::over`.
    void over(int number, bool isAwaited);
    /// Another server, or the same one anew.
    void linkBegun() { receivers.forget(); }

    /// Those of this run; entries hold none of them.
    [[nodiscard]] const KnownPasswords &passwords() const { return known; }

    /// When the next command without an answer is silent; none when no such command is there.
    [[nodiscard]] std::optional<Time> nextSilence() const;
    void judgeSilence(Time at);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    [[nodiscard]] const LedgerEntry &entry(int row) const { return entries.at(row); }
    /// -1 when it is not kept any more.
    [[nodiscard]] int rowOf(int number) const;

signals:
    /// There is another verdict on it than before.
    void judged(const LedgerEntry &entry);

private:
    void add(const LedgerEntry &entry);
    void hideInAll();
    void judge(int row);
    void makeRoom();

    QList<LedgerEntry> entries;
    KnownPasswords known;
    Receivers receivers;
    QList<int> pending; ///< the numbers of those that nobody waits for and that have no answer yet
    qsizetype kept = 0; ///< characters of all replies
};
