// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class BookBansPage;
class BookPlayersPage;
class BookServersPage;
class BookWatch;
class KeptBook;
struct BookSize;
struct Services;

namespace Ui {
class BookWindow;
}

/// The window `frmbook`: the switch of the player book, and a page each for its players, servers and bans.
class BookWindow final : public QWidget {
    Q_OBJECT

public:
    BookWindow(KeptBook &kept_, BookWatch &watch_, const Services &services_, QWidget *parent = nullptr);
    ~BookWindow() override;

    /// Shows what the book has about a player of the list; without a book it shows how one is begun.
    void lookUp(const QString &guid, const QString &name, const QString &address);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void addPages();
    void wireWatch();
    void showState();
    void showSize(const BookSize &size);
    void reload();
    void reloadShown();

    KeptBook &kept;
    BookWatch &watch;
    std::unique_ptr<Ui::BookWindow> ui;
    BookPlayersPage *players;
    BookServersPage *servers;
    BookBansPage *bans;
    bool wasOpen = false;
};
