// SPDX-License-Identifier: MIT
#include "book_window.h"
#include "ui_book_window.h"

#include "base/keys.h"
#include "book_bans_page.h"
#include "book_players_page.h"
#include "book_servers_page.h"
#include "book_store.h"
#include "book_watch.h"
#include "kept_book.h"

#include <QLocale>
#include <QShowEvent>

#include <utility>

using namespace Qt::StringLiterals;

BookWindow::BookWindow(KeptBook &kept_, BookWatch &watch_, const Services &services_, QWidget *parent)
    : QWidget(parent),
      kept(kept_),
      watch(watch_),
      ui(std::make_unique<Ui::BookWindow>()),
      players(new BookPlayersPage(kept.book(), watch, services_)),
      servers(new BookServersPage(kept.book(), services_)),
      bans(new BookBansPage(kept.book(), watch, services_))
{
    ui->setupUi(this);
    addPages();
    addCloseKey(*this);
    ui->chkbook->setChecked(kept.settings().isKept);
    ui->spnbookdays->setValue(kept.settings().days);
    connect(ui->chkbook, &QCheckBox::toggled, this, [this](bool on) { kept.keep(on); });
    connect(ui->spnbookdays, &QSpinBox::valueChanged, this, [this](int days) { kept.setDays(days); });
    connect(&kept.book(), &Book::statechanged, this, &BookWindow::showState);
    connect(&kept.book(), &Book::begunanew, this, [this] {
        players->clear();
        bans->clear();
        reload();
    });
    wireWatch();
    showState();
}

BookWindow::~BookWindow() = default;

// What the lists would like to have is more than a small screen.
QSize BookWindow::sizeHint() const
{
    return QSize(1000, 640).expandedTo(minimumSizeHint());
}

void BookWindow::addPages()
{
    ui->tabbook->addTab(players, u"Players"_s);
    ui->tabbook->addTab(servers, u"Servers"_s);
    ui->tabbook->addTab(bans, u"Bans"_s);
    connect(ui->tabbook, &QTabWidget::currentChanged, this, &BookWindow::reloadShown);
    connect(players, &BookPlayersPage::remarkchanged, &watch, &BookWatch::setRemark);
    connect(players, &BookPlayersPage::changed, this, [this] {
        bans->reload();
        showState();
    });
}

// What comes while the window is closed is read when it is opened.
void BookWindow::wireWatch()
{
    connect(&watch, &BookWatch::fed, this, [this](const QList<qint64> &seen) {
        if (!isVisible())
            return;
        if (ui->tabbook->currentWidget() == servers)
            servers->reload(watch.server());
        players->search();
        if (seen.contains(players->player()))
            players->reload();
        showState(); // counting all sightings of a large book takes longest
    });
    connect(&watch, &BookWatch::noted, this, [this] {
        if (!isVisible())
            return;
        players->reload();
        bans->reload();
    });
}

void BookWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        reload();
}

void BookWindow::showState()
{
    Book &book = kept.book();
    const bool isOpen = book.isOpen();
    ui->tabbook->setEnabled(isOpen);
    if (std::exchange(wasOpen, isOpen) != isOpen)
        reload();
    if (!book.trouble().isEmpty())
        ui->lblbookstate->setText(book.trouble());
    else if (!isOpen)
        ui->lblbookstate->setText(u"No player book is kept. Tick the box above to begin one: it notes who plays on the "
                                  "servers that you connect to, under which names and from which addresses."_s);
    else
        book.ask([](BookStore &store) { return store.size(); }, this, [this](const BookSize &size) { showSize(size); });
}

void BookWindow::showSize(const BookSize &size)
{
    if (!kept.book().trouble().isEmpty() || !kept.book().isOpen())
        return;
    const QLocale locale = QLocale::c();
    const QString players_ = size.players == 1 ? u"1 player"_s : locale.toString(size.players) + u" players"_s;
    const QString seen = size.sightings == 1 ? u"1 sighting"_s : locale.toString(size.sightings) + u" sightings"_s;
    ui->lblbookstate->setText(u"%1, %2, %3 in molvark-players.db"_s.arg(
        players_, seen, locale.formattedDataSize(size.bytes, 1, QLocale::DataSizeTraditionalFormat)));
}

void BookWindow::reload()
{
    if (!kept.book().isOpen()) {
        players->clear();
        servers->clear();
        bans->clear();
        return;
    }
    players->search();
    players->reload();
    servers->reload(watch.server());
    bans->reload();
}

void BookWindow::reloadShown()
{
    if (kept.book().isOpen() && ui->tabbook->currentWidget() == servers)
        servers->reload(watch.server());
}

void BookWindow::lookUp(const QString &guid, const QString &name, const QString &address)
{
    if (!kept.book().isOpen())
        return ui->chkbook->setFocus();
    ui->tabbook->setCurrentWidget(players);
    players->lookUp(guid, name, address);
}
