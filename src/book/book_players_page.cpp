// SPDX-License-Identifier: MIT
#include "book_players_page.h"
#include "ui_book_players_page.h"

#include "base/clock.h"
#include "base/keys.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "base/replaced_file.h"
#include "book.h"
#include "book_export.h"
#include "book_store.h"
#include "book_text.h"
#include "book_watch.h"
#include "list_views.h"
#include "player_list_model.h"
#include "rcon/services.h"
#include "shown_time.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextDocument>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int pageSize = 200;           // players that are asked for at a time
constexpr int mostAliases = 1000;       // in a list
constexpr qsizetype longestText = 1000; // characters of an item; painting a very long one takes seconds

/// Something in a list that has a number in the book.
class NumberedItem final : public QListWidgetItem {
public:
    NumberedItem(const QString &shown, const QString &edited, qint64 number_)
        : QListWidgetItem(shown), text(edited), number(number_)
    {
    }

    // What is edited is the text alone, without the time before it.
    [[nodiscard]] QVariant data(int role) const override
    {
        return role == Qt::EditRole ? QVariant(text) : QListWidgetItem::data(role);
    }
    void setData(int role, const QVariant &value) override
    {
        if (role != Qt::EditRole)
            return QListWidgetItem::setData(role, value);
        text = value.toString().simplified();
        if (listWidget())
            emit listWidget()->itemChanged(this);
    }

    QString text;
    const qint64 number;
};

const NumberedItem *current(const QListWidget &list)
{
    return static_cast<const NumberedItem *>(list.currentItem());
}

/// A player chooses his name: what looks like a mark-up in it is none.
QString plainTip(const QString &text)
{
    return Qt::convertFromPlainText(text.left(longestText), Qt::WhiteSpaceNormal);
}

QString aliasText(const BookAlias &alias)
{
    return alias.text.left(longestText) +
           u"  (%1 to %2, %3)"_s.arg(shownTime(alias.firstSeen), shownTime(alias.lastSeen),
                                     alias.times == 1 ? u"once"_s : QString::number(alias.times) + u" times"_s);
}

QListWidgetItem *newAlias(const BookAlias &alias)
{
    auto *item = new QListWidgetItem(aliasText(alias));
    item->setToolTip(plainTip(aliasText(alias)));
    return item;
}

/// What became of an action, as far as the words before do not tell it: the server's verdict and the state of a ban.
QStringList fateOf(const BookAction &action)
{
    QStringList fate;
    if (!action.verdict.isEmpty())
        fate.append(action.verdict);
    const bool isTold = action.state == BookBan::Temporary || action.state == BookBan::Imported;
    if (action.kind != BookAction::Kick && !isTold)
        fate.append(banStateWord(action.state));
    return fate;
}

QString actionText(const BookAction &action)
{
    QString text = shownTime(action.time) + u"  "_s + actionWord(action.kind);
    if (action.isAutomatic)
        text += u", automatic"_s;
    if (action.isMaybe)
        text += u", maybe"_s;
    if (action.isImported)
        text += u", imported"_s;
    if (!action.server.isEmpty())
        text += u" on "_s + action.server;
    if (!action.num.isEmpty())
        text += u", slot "_s + action.num;
    text += u" as "_s + action.name.left(longestText);
    const QStringList fate = fateOf(action);
    if (!fate.isEmpty())
        text += u": "_s + fate.join(u", "_s);
    return action.reason.isEmpty() ? text : text + u" ("_s + action.reason + u')';
}

/// Fills the list without losing the place in it.
template <typename Each, typename Text>
void refill(QListWidget &list, const QList<Each> &all, const Text &text)
{
    const QSignalBlocker quiet(list);
    const int row = list.currentRow();
    list.clear();
    for (const Each &each : all)
        list.addItem(text(each));
    list.setCurrentRow(std::min(row, list.count() - 1));
}

PlotData pingPlot(const QList<BookSighting> &sightings)
{
    PlotData plot;
    plot.unit = u"ms"_s;
    plot.most = 400; // 999 is that of a player who does not answer
    for (const BookSighting &sighting : sightings) {
        if (sighting.ping >= 0)
            plot.points.append({.time = sighting.time, .value = sighting.ping});
    }
    if (!plot.points.isEmpty()) {
        plot.from = plot.points.first().time;
        plot.to = std::max(plot.points.last().time, plot.from + 3600);
    }
    return plot;
}

/// Keeps the row of a list that means the same as before, by its number.
void selectNumber(QListWidget &list, qint64 number)
{
    for (int row = 0; row < list.count(); ++row) {
        if (static_cast<const NumberedItem *>(list.item(row))->number == number)
            return list.setCurrentRow(row);
    }
    list.setCurrentRow(-1);
}

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

void BookPlayersPage::reload()
{
    if (shown != 0 && chosen == shown && isBeingEdited(*ui->lstbooknotes))
        return;
    if (chosen == 0)
        return fill({});
    book.ask(
        [player = chosen, edition = book.edition()](BookStore &store) {
            return store.edition() == edition ? store.page(player, mostAliases) : std::nullopt;
        },
        this,
        [this, player = chosen](const std::optional<BookPage> &page) {
            const bool isEdited = player == shown && isBeingEdited(*ui->lstbooknotes);
            if (player == chosen && !isEdited)
                fill(page);
        });
}

void BookPlayersPage::fill(const std::optional<BookPage> &page)
{
    if (!page)
        chosen = 0;
    shown = chosen;
    const BookPage about = page.value_or(BookPage());
    refill(*ui->lstbooknames, about.names, newAlias);
    refill(*ui->lstbookaddresses, about.addresses, newAlias);
    fillNotes(about.notes);
    fillActions(about.actions);
    ui->pltbookping->setData(pingPlot(about.sightings));
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
    refill(*ui->lstbooknotes, notes, [](const BookNote &note) {
        auto *item = new NumberedItem(shownTime(note.time) + u"  "_s + note.text, note.text, note.note);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        item->setToolTip(plainTip(note.text));
        return item;
    });
    selectNumber(*ui->lstbooknotes, number);
}

void BookPlayersPage::fillActions(const QList<BookAction> &actions)
{
    const NumberedItem *before = current(*ui->lstbookactions);
    const qint64 number = before ? before->number : -1;
    const QString typed = ui->txtbookreason->text();
    refill(*ui->lstbookactions, actions, [](const BookAction &action) {
        auto *item = new NumberedItem(actionText(action), action.reason, action.action);
        item->setToolTip(plainTip(actionText(action)));
        return item;
    });
    selectNumber(*ui->lstbookactions, number);
    const NumberedItem *action = current(*ui->lstbookactions);
    const bool isBeingTyped = action && action->number == number && ui->txtbookreason->hasFocus();
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
                tellUnwritten(fault->number(), u"Player"_s);
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
            QList<QStringList> rows{PlayerListModel::headers()};
            for (const BookPlayer &player : store.search(text, 0, std::numeric_limits<int>::max()))
                rows.append(PlayerListModel::cells(player));
            return tableCsv(rows);
        },
        this,
        [this, name](const QByteArray &table) {
            const QByteArray byteOrderMark = "\xEF\xBB\xBF"; // or some tables take the letters for others
            if (const std::optional<Fault> fault = replaceFile(name, byteOrderMark + table))
                tellUnwritten(fault->number(), u"List"_s);
        });
}

void BookPlayersPage::tellUnwritten(int error, const QString &what)
{
    services.prompts.refuse(u"Error writing file, err %1\r%2 not written"_s.arg(error).arg(what), u"Failed to Save"_s);
}
