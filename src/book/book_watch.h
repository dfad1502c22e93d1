// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"
#include "command_watch.h"
#include "rcon/known_game.h"

#include <QObject>

#include <functional>
#include <memory>

class Book;
class BookStore;
class Clock;
struct SentCopy;

/// A row of a list of players.
struct ListedPlayer {
    SeenPlayer seen;
    QString num; ///< slot number
    bool isDamaged = false;
};

/// A row about whose player something is written down in the book.
struct RemarkedRow {
    QString num;
    QString guid;
    QString name;
    bool isFlagged = false; ///< else he has a note
};

/// Writes into the player book what happens: who is in each list of players, and who is thrown out with what verdict.
/// It only looks on, and does nothing at all while no book is kept.
class BookWatch final : public QObject {
    Q_OBJECT

public:
    BookWatch(Book &book_, const Clock &clock_, QObject *parent = nullptr);

    /// Tries once more to write what is kept back, and ends the book.
    void end();

    /// The server that is connected, as host and port; empty when none is.
    void setServer(const QString &address);
    [[nodiscard]] const QString &server() const { return connected; }
    void takeReply(const QString &reply);
    void takeCommand(const QString &comm);

    /// A list of players has come, whole.
    void populated(const QList<ListedPlayer> &players);
    /// A command that throws this player out is about to be sent.
    void acting(const ListedPlayer &player, const QString &command);
    /// The same for a ping of 999. Whom it meets is in doubt when the two are not the same.
    void kicking(const QString &command, const ListedPlayer &counted, const ListedPlayer &listed);
    /// Tells what becomes of a command that is about to be sent.
    void follow(const QString &command, const CommandWatch::Listener &listener);
    /// The command has had its time, whether it has gone out or not.
    void unfollow(const QString &command) { commands.giveUp(command); }
    void sent(const SentCopy &copy);
    void judged(const CommandVerdict &verdict) { commands.judged(verdict); }
    /// Writes into the book what happens once only. While it is locked or the disk is full it is kept, the last hundred
    /// of such, and written as soon as something can be. What goes by numbers of one edition of the book alone is not
    /// written into another.
    void write(const std::function<void(BookStore &)> &work, int edition = 0);
    /// Work that writes what is kept back: whatever is to take away something of it comes behind it.
    [[nodiscard]] std::function<void(BookStore &)> keptBack() const;

    /// Note or flag of a player have been changed in the book.
    void setRemark(qint64 player, bool hasNote, bool isFlagged);

signals:
    /// The list is in the book; these players were in it.
    void fed(const QList<qint64> &players);
    /// An action is in the book, or the verdict on one.
    void noted();
    void serverchanged();
    /// Which rows are to be marked.
    void remarked(const QList<RemarkedRow> &rows);
    /// The flagged players who are there; empty when none is.
    void flaggedshown(const QString &text);
    /// One of them has just come.
    void flaggedcame();

private:
    struct Change;
    using Changes = QList<std::shared_ptr<Change>>;

    void forget();
    void writeChanges();
    static void writeAll(const Changes &all, BookStore &store);
    void dropWritten();
    void tellFlagged();
    void takeKnown(const QList<KnownPlayer> &players, const QStringList &nums, const QList<ListedPlayer> &damaged);
    void meet(const KnownPlayer &player);
    void announce(const QList<KnownPlayer> &players, const QList<ListedPlayer> &damaged);
    void showRemarks();
    void note(const BookAction &action, const QString &command);
    [[nodiscard]] BookAction actionOn(const ListedPlayer &player, const QString &command) const;

    Book &book;
    const Clock &clock;
    QString connected;
    KnownGame game;
    CommandWatch commands;
    Changes changes;                 ///< that are not known to be in the book
    QList<KnownPlayer> known;        ///< of the last list
    QStringList knownNums;           ///< their slot numbers
    QList<ListedPlayer> damagedRows; ///< of the last list
    QList<KnownPlayer> met;          ///< whoever has been on this server and has a note or a flag
    QList<KnownPlayer> here;         ///< the flagged ones who have been announced and have not left
};
