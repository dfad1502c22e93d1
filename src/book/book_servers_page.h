// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class Book;
struct Services;

namespace Ui {
class BookServersPage;
}

/// The page "Servers" of the player book: how many were on a server, and when its map changed.
class BookServersPage final : public QWidget {
    Q_OBJECT

public:
    BookServersPage(Book &book_, const Services &services_, QWidget *parent = nullptr);
    ~BookServersPage() override;

    /// Asks the book for its servers, and for the numbers of the chosen one; at first that is `preferred`.
    void reload(const QString &preferred);
    void clear();

private:
    void showServers(const QStringList &servers, const QString &preferred);
    void showCounts();
    void cmdbookpng_Click();

    Book &book;
    const Services &services;
    std::unique_ptr<Ui::BookServersPage> ui;
    int asked = 0; ///< questions for numbers; only the answer to the last one is shown
};
