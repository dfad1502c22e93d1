// SPDX-License-Identifier: MIT
#include "book_players_page.h"
#include "ui_book_players_page.h"

#include "base/clock.h"
#include "base/csv_record.h"
#include "base/guid.h"
#include "base/keys.h"
#include "base/list_views.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "base/replaced_file.h"
#include "book.h"
#include "book_export.h"
#include "book_store.h"
#include "book_text.h"
#include "book_watch.h"
#include "player_list_model.h"
#include "player_page_items.h"
#include "rcon/services.h"

#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int pageSize = 200;     // players that are asked for at a time
constexpr int mostAliases = 1000; // in a list

} // namespace

BookPlayersPage::BookPlayersPage(Book &book_, BookWatch &watch_, const Services &services_, QWidget *parent)
    : QWidget(parent),
      book(book_),
      watch(watch_),
      services(services_),
      ui(std::make_unique<Ui::BookPlayersPage>()),
      found(new PlayerListModel(this)),
      newest(std::make_shared<std::atomic<int>>(0))
{
    ui->setupUi(this);
    showModel(*ui->tblbook, *found, {0, 12, 17, 17, 6, 6, 8});
    ui->playersSplitter->setSizes({200, 300});
    wireLists();
    wireButtons();
    offer();
}

BookPlayersPage::~BookPlayersPage() = default;

void BookPlayersPage::wireLists()
{
    for (QListWidget *list : {ui->lstbooknames, ui->lstbookaddresses, ui->lstbooknotes, ui->lstbookactions})
        showPlaceholder(list);
    connect(ui->txtbooksearch, &QLineEdit::textChanged, this, &BookPlayersPage::search);
    connect(found, &PlayerListModel::morewanted, this, &BookPlayersPage::searchMore);
    connect(ui->tblbook->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &row) {
                if (row.isValid())
                    choose(found->player(row.row()).player);
            });
    connect(ui->lstbooknotes, &QListWidget::itemChanged, this,
            [this](const QListWidgetItem *item) { noteEdited(*item); });
    connect(ui->lstbooknotes, &QListWidget::currentRowChanged, this, &BookPlayersPage::offer);
    connect(ui->lstbookactions, &QListWidget::currentRowChanged, this, [this] {
        const NumberedItem *action = current(*ui->lstbookactions);
        ui->txtbookreason->setText(action ? action->text : QString());
        offer();
    });
}

void BookPlayersPage::wireButtons()
{
    connect(ui->txtbooknote, &QLineEdit::textChanged, this, &BookPlayersPage::offer);
    connect(ui->txtbooknote, &QLineEdit::returnPressed, ui->cmdbooknote, &QPushButton::click);
    connect(ui->cmdbooknote, &QPushButton::clicked, this, &BookPlayersPage::cmdbooknote_Click);
    connect(ui->cmdbooknotedelete, &QPushButton::clicked, this, &BookPlayersPage::cmdbooknotedelete_Click);
    connect(ui->txtbookreason, &QLineEdit::returnPressed, ui->cmdbookreason, &QPushButton::click);
    connect(ui->cmdbookreason, &QPushButton::clicked, this, &BookPlayersPage::cmdbookreason_Click);
    connect(ui->chkbookflag, &QCheckBox::clicked, this, [this](bool on) {
        change([player = shown, on](BookStore &store) { store.setFlag(player, on); }, {},
               [this] { reload(); }); // the box says what is in the book
    });
    connect(ui->cmdbookforget, &QPushButton::clicked, this, &BookPlayersPage::cmdbookforget_Click);
    connect(ui->cmdbookjson, &QPushButton::clicked, this, &BookPlayersPage::cmdbookjson_Click);
    connect(ui->cmdbookcsv, &QPushButton::clicked, this, &BookPlayersPage::cmdbookcsv_Click);
}

// A search that was typed over is not made any more, and its answer not shown.
void BookPlayersPage::search()
{
    const int mine = ++*newest;
    const QString text = ui->txtbooksearch->text();
    const int wanted = text == searched ? std::max(pageSize, found->rowCount()) : pageSize;
    searched = text;
    book.ask([newest = newest, mine, wanted,
              text](BookStore &store) { return *newest == mine ? store.search(text, 0, wanted) : QList<BookPlayer>(); },
             this,
             [this, mine, wanted](const QList<BookPlayer> &players) {
                 if (*newest == mine)
                     showFound(players, wanted);
             });
}

void BookPlayersPage::showFound(const QList<BookPlayer> &players, int wanted)
{
    const int scrolled = ui->tblbook->verticalScrollBar()->value();
    found->setPlayers(players, players.size() == wanted);
    selectChosen();
    ui->tblbook->verticalScrollBar()->setValue(scrolled);
}

void BookPlayersPage::searchMore()
{
    const int mine = *newest;
    book.ask([text = ui->txtbooksearch->text(),
              from = found->rowCount()](BookStore &store) { return store.search(text, from, pageSize); },
             this,
             [this, mine](const QList<BookPlayer> &players) {
                 if (*newest == mine)
                     found->addPlayers(players, players.size() == pageSize);
             });
}

// Whoever is shown below is marked in the list, if he is in it.
void BookPlayersPage::selectChosen()
{
    const int row = found->rowOf(chosen);
    const QSignalBlocker quiet(ui->tblbook->selectionModel());
    if (row < 0)
        ui->tblbook->setCurrentIndex({});
    else if (row != ui->tblbook->currentIndex().row())
        ui->tblbook->setCurrentIndex(found->index(row, 0));
    ui->tblbook->viewport()->update();
}

void BookPlayersPage::choose(qint64 player)
{
    if (player == chosen && player == shown)
        return;
    startAnew();
    chosen = player;
    missing.clear();
    reload();
}

// Nothing can be done to the one who is still shown when another has been chosen.
void BookPlayersPage::startAnew()
{
    shown = 0;
    ui->txtbooknote->clear();
    offer();
}

/// What is shown of a player; nothing when he is in another book, or in none.
struct BookPlayersPage::Shown {
    std::optional<BookPage> page; ///< without the sightings
    PlotData pings;
};

// There may be very many sightings of one player, which the window needs for the plot alone.
BookPlayersPage::Shown BookPlayersPage::shownOf(const BookStore &store, int edition, qint64 player)
{
    Shown about;
    if (store.edition() == edition)
        about.page = store.page(player, mostAliases);
    if (about.page)
        about.pings = pingPlot(std::exchange(about.page->sightings, {}));
    return about;
}

void BookPlayersPage::reload()
{
    if (shown != 0 && chosen == shown && isBeingEdited(*ui->lstbooknotes))
        return;
    if (chosen == 0)
        return fill({});
    book.ask([player = chosen, edition = book.edition()](BookStore &store) { return shownOf(store, edition, player); },
             this,
             [this, player = chosen](const Shown &about) {
                 const bool isEdited = player == shown && isBeingEdited(*ui->lstbooknotes);
                 if (player == chosen && !isEdited)
                     fill(about);
             });
}

void BookPlayersPage::fill(const Shown &all)
{
    const std::optional<BookPage> &page = all.page;
    if (!page)
        chosen = 0;
    shown = chosen;
    const BookPage about = page.value_or(BookPage());
    refill(*ui->lstbooknames, about.names, newAlias);
    refill(*ui->lstbookaddresses, about.addresses, newAlias);
    fillNotes(about.notes);
    fillActions(about.actions);
    ui->pltbookping->setData(all.pings);
    ui->chkbookflag->setChecked(about.player.isFlagged);
    QString who = missing.isEmpty() ? u"Choose a player to see what the book has about him."_s
                                    : shownName(missing) + u" is not in the book yet."_s;
    if (page)
        who = shownName(about.player.name) + u", GUID "_s + about.player.guid;
    ui->lblbookplayer->setText(who);
    offer();
    if (page)
        emit remarkchanged(about.player.player, !about.notes.isEmpty(), about.player.isFlagged);
}

void BookPlayersPage::fillNotes(const QList<BookNote> &notes)
{
    const NumberedItem *before = current(*ui->lstbooknotes);
    const qint64 number = before ? before->number : -1;
    refill(*ui->lstbooknotes, notes, newNote);
    selectNumber(*ui->lstbooknotes, number);
}

void BookPlayersPage::fillActions(const QList<BookAction> &actions)
{
    const NumberedItem *before = current(*ui->lstbookactions);
    const qint64 number = before ? before->number : -1;
    const QString kept = before ? before->text : QString();
    const QString typed = ui->txtbookreason->text();
    refill(*ui->lstbookactions, actions, newAction);
    selectNumber(*ui->lstbookactions, number);
    const NumberedItem *action = current(*ui->lstbookactions);
    const bool isBeingTyped = action && action->number == number && (typed != kept || ui->txtbookreason->hasFocus());
    const QString reason = action ? action->text : QString();
    ui->txtbookreason->setText(isBeingTyped ? typed : reason);
}

void BookPlayersPage::offer()
{
    const bool isSomebody = shown != 0;
    for (QWidget *control :
         std::initializer_list<QWidget *>{ui->chkbookflag, ui->cmdbookforget, ui->cmdbookjson, ui->txtbooknote})
        control->setEnabled(isSomebody);
    ui->cmdbooknote->setEnabled(isSomebody && !isNoting && !ui->txtbooknote->text().trimmed().isEmpty());
    ui->cmdbooknotedelete->setEnabled(isSomebody && current(*ui->lstbooknotes) != nullptr);
    ui->txtbookreason->setEnabled(isSomebody && current(*ui->lstbookactions) != nullptr);
    ui->cmdbookreason->setEnabled(isSomebody && current(*ui->lstbookactions) != nullptr);
}

void BookPlayersPage::lookUp(const QString &guid, const QString &name, const QString &address)
{
    ui->txtbooksearch->setText(isNobodysGuid(guid) ? cleanName(name) : guid);
    startAnew();
    book.ask([guid, name, address](BookStore &store) { return store.find(guid, name, address); }, this,
             [this, guid, name](std::optional<qint64> player) {
                 chosen = player.value_or(0);
                 missing = player || guid.isEmpty() ? QString() : name;
                 selectChosen();
                 reload();
             });
}

void BookPlayersPage::clear()
{
    ++*newest;
    found->setPlayers({}, false);
    chosen = 0;
    isNoting = false;
    missing.clear();
    ui->txtbooknote->clear();
    fill({});
}

template <typename Work>
void BookPlayersPage::change(Work work, const Then &done, const Then &failed)
{
    book.askThis(
        work, this,
        [this, done] {
            if (done)
                done();
            reload();
            search();
            emit changed();
        },
        failed);
}

void BookPlayersPage::cmdbooknote_Click()
{
    const qint64 now = services.clock.now().toSecsSinceEpoch();
    const QString typed = ui->txtbooknote->text();
    isNoting = true;
    offer();
    change([player = shown, text = typed.trimmed(), now](BookStore &store) { store.addNote(player, text, now); },
           [this, player = shown, typed] {
               isNoting = false;
               if (player == shown && ui->txtbooknote->text() == typed)
                   ui->txtbooknote->clear();
               offer();
           },
           [this] { // what was typed stays
               isNoting = false;
               offer();
           });
}

void BookPlayersPage::cmdbooknotedelete_Click()
{
    change([note = current(*ui->lstbooknotes)->number](BookStore &store) { store.deleteNote(note); }, {}, {});
}

// A note that is emptied stays as it was: there is a button for removing it.
void BookPlayersPage::noteEdited(const QListWidgetItem &item)
{
    const auto &note = static_cast<const NumberedItem &>(item);
    const qint64 now = services.clock.now().toSecsSinceEpoch();
    ui->lstbooknotes->setFocus(); // the editor goes
    if (note.text.isEmpty())
        return reload();
    watch.write(
        [number = note.number, text = note.text, now](BookStore &store) { store.changeNote(number, text, now); },
        book.edition());
}

void BookPlayersPage::cmdbookreason_Click()
{
    watch.write([action = current(*ui->lstbookactions)->number,
                 reason = ui->txtbookreason->text().trimmed()](BookStore &store) { store.setReason(action, reason); },
                book.edition());
}

void BookPlayersPage::cmdbookforget_Click()
{
    const qint64 player = shown;
    const QString who = ui->lblbookplayer->text();
    const Answer answer = services.prompts.ask(
        {u"Forget this player"_s, u"Remove everything that the book has about this player, his bans too?\r"_s + who,
         BoxIcon::Question, BoxButtons::YesNo});
    if (answer != Answer::Yes || player != shown)
        return;
    change(
        [before = watch.keptBack(), player](BookStore &store) {
            before(store); // or it would come back
            store.remove(player);
        },
        [this, player] {
            book.tell([](BookStore &store) { store.cleanUp(); });
            chosen = chosen == player ? 0 : chosen;
            emit remarkchanged(player, false, false);
        },
        [this, who] {
            services.prompts.refuse(who + u" has not been forgotten.\r"_s + book.trouble(), u"Forget this player"_s);
        });
}

void BookPlayersPage::cmdbookjson_Click()
{
    const qint64 player = shown;
    const int edition = book.edition();
    const QString name =
        askReplacedFile(services.prompts, {u"Save file as..."_s, u"molvark_player"_s, u"json"_s, u"Save as JSON"_s});
    if (name.isEmpty())
        return;
    book.ask(
        [player, edition](BookStore &store) { return store.edition() == edition ? store.page(player) : std::nullopt; },
        this,
        [this, name](const std::optional<BookPage> &page) {
            if (!page)
                services.prompts.refuse(u"This player is not in the book any more\rPlayer not written"_s,
                                        u"Failed to Save"_s);
            else if (const std::optional<Fault> fault = replaceFile(name, pageJson(*page)))
                tellUnwritten(services.prompts, *fault, u"Player not written"_s);
        });
}

void BookPlayersPage::cmdbookcsv_Click()
{
    const QString name = askReplacedFile(services.prompts,
                                         {u"Save file as..."_s, u"molvark_players"_s, u"csv"_s, u"Save list as CSV"_s});
    if (name.isEmpty())
        return;
    book.ask(
        [text = ui->txtbooksearch->text()](BookStore &store) {
            QString table = csvRecord(PlayerListModel::headers());
            for (const BookPlayer &player : store.search(text, 0, std::numeric_limits<int>::max()))
                table += csvRecord(PlayerListModel::cells(player));
            return table;
        },
        this,
        [this, name](const QString &table) {
            if (const std::optional<Fault> fault = replaceTable(name, table))
                tellUnwritten(services.prompts, *fault, u"List not written"_s);
        });
}
