// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QWidget>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

class Book;
class BookStore;
class BookWatch;
class PlayerListModel;
class QListWidgetItem;
struct Services;

namespace Ui {
class BookPlayersPage;
}

/// The page "Players" of the player book: a search, and everything about the player who is chosen.
class BookPlayersPage final : public QWidget {
    Q_OBJECT

public:
    BookPlayersPage(Book &book_, BookWatch &watch_, const Services &services_, QWidget *parent = nullptr);
    ~BookPlayersPage() override;

    /// Searches anew; who is chosen stays chosen.
    void search();
    /// Shows what is new about him who is chosen.
    void reload();
    [[nodiscard]] qint64 player() const { return chosen; }
    /// Looks somebody up and chooses him.
    void lookUp(const QString &guid, const QString &name, const QString &address);
    /// Shows nobody, because there is no book, or another one.
    void clear();

signals:
    /// What is written down about a player, as it is now.
    void remarkchanged(qint64 player, bool hasNote, bool isFlagged);
    /// Something has been changed that stands on other pages too.
    void changed();

private:
    void wireLists();
    void wireButtons();
    void searchMore();
    void showFound(const QList<BookPlayer> &players, int wanted);
    void selectChosen();
    void choose(qint64 player);
    struct Shown;
    [[nodiscard]] static Shown shownOf(const BookStore &store, int edition, qint64 player);
    void fill(const Shown &all);
    void fillNotes(const QList<BookNote> &notes);
    void fillActions(const QList<BookAction> &actions);
    void offer();
    /// `done` happens when it is in the book, and `failed` when it could not be written.
    using Then = std::function<void()>;
    template <typename Work>
    void change(Work work, const Then &done, const Then &failed);
    void startAnew();

    void cmdbooknote_Click();
    void cmdbooknotedelete_Click();
    void noteEdited(const QListWidgetItem &item);
    void cmdbookreason_Click();
    void cmdbookforget_Click();
    void cmdbookjson_Click();
    void cmdbookcsv_Click();

    Book &book;
    BookWatch &watch;
    const Services &services;
    std::unique_ptr<Ui::BookPlayersPage> ui;
    PlayerListModel *found;
    std::shared_ptr<std::atomic<int>> newest; ///< search; the book's thread leaves out those before it
    QString searched;                         ///< what was searched for last
    qint64 chosen = 0;
    qint64 shown = 0;      ///< what is pressed is about him; 0 until the one who was chosen is shown
    bool isNoting = false; ///< a note is on its way into the book
    QString missing;       ///< who was looked up and is not in the book
};
