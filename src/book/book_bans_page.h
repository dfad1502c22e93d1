// SPDX-License-Identifier: MIT
#pragma once

#include "book_records.h"

#include <QWidget>

#include <memory>

class BanListModel;
class Book;
class BookWatch;
struct CommandVerdict;
struct Services;

namespace Ui {
class BookBansPage;
}

/// The ban book: the bans that were done here or read from a server's ban file, and lifting them.
class BookBansPage final : public QWidget {
    Q_OBJECT

public:
    BookBansPage(Book &book_, BookWatch &watch_, const Services &services_, QWidget *parent = nullptr);
    ~BookBansPage() override;

    void reload();
    void clear();

private:
    void showBans(const QList<BookBan> &answer);
    [[nodiscard]] const BookBan *chosen() const;
    [[nodiscard]] QString obstacle(const BookBan &ban) const;
    void offer();
    void cmdunban_Click();
    struct Unbanning;
    void confirmUnban(const Unbanning &unbanning);
    void unban(const Unbanning &unbanning);
    void takeVerdict(const Unbanning &unbanning, const CommandVerdict &verdict);
    void offerToMark(const Unbanning &unbanning);
    void lift(const Unbanning &unbanning);
    void say(const QString &said);
    void cmdbanimport_Click();
    void importBans(const QByteArray &file);
    void cmdbanexport_Click();

    Book &book;
    BookWatch &watch;
    const Services &services;
    std::unique_ptr<Ui::BookBansPage> ui;
    BanListModel *bans;
    QString outcome;          ///< what came of the last unbanning or import
    bool isAsked = false;     ///< the book, which bans go together
    bool isUnbanning = false; ///< the person is asked, or the server
};
