// SPDX-License-Identifier: MIT
#include "players_page.h"
#include "ui_players_page.h"

#include "base/clock.h"
#include "base/colour_codes.h"
#include "base/fault.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "base/wire_text.h"
#include "checked_deeds.h"
#include "damage_mark.h"
#include "dismissals.h"
#include "getstatus_reply.h"
#include "output/log_file.h"
#include "player_csv.h"
#include "player_menu.h"
#include "rcon/reading.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "status_table.h"

#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

Qt::SortOrder sortOrder(int column)
{
    return column == PlayerColumn::Score ? Qt::DescendingOrder : Qt::AscendingOrder;
}

/// Three head lines and nothing else: nobody is on the server. Anything shorter may be a list that is cut off.
bool isEmptyTable(const QString &reply)
{
    constexpr int lines = 4;
    return reply.startsWith("map:"_L1) && reply.endsWith("\n\n"_L1) && reply.count(u'\n') == lines;
}

} // namespace

PlayersPage::PlayersPage(Services &services_, QWidget *parent)
    : QWidget(parent),
      services(services_),
      ui(std::make_unique<Ui::PlayersPage>()),
      players(this),
      reader(services_, this),
      refresh(
          services_, [this] { return populate(BroughtBy::Tick); }, this),
      checkedActions(services_, this)
{
    ui->setupUi(this);
    actions.emplace(
        services_, PlayerActions::Controls{players, *ui->msfplayers, *ui->chkplyq, *ui->chkremcol},
        [this](const WantedPlayer &wanted, const QString &command) { emit acting(wanted, command); },
        [this](const QString &command) { emit acted(command); });
    ui->msfplayers->showTable(players);
    players.setMark(
        [view = ui->msfplayers](RowDamage damage, PlayerRemark remark) { return rowMark(damage, remark, *view); });
    showPlaceholder(ui->msfplayers);
    ui->complayersort->setCurrentIndex(-1); // the server's own order

    connect(ui->cmdplypop, &QPushButton::clicked, this, &PlayersPage::cmdplypop_Click);
    connect(ui->complayersort, &QComboBox::currentIndexChanged, this, &PlayersPage::complayersort_Click);
    connect(ui->cmdplykick, &QPushButton::clicked, this, [this] { actions->dismiss(kick); });
    connect(ui->cmdplyban, &QPushButton::clicked, this, [this] { actions->dismiss(ban); });
    connect(ui->cmdtempban, &QPushButton::clicked, this, [this] { actions->dismiss(temporaryBan); });
    connect(ui->cmdplymessage, &QPushButton::clicked, this, [this] { actions->message(); });
    connect(ui->cmdsavenames, &QPushButton::clicked, this, &PlayersPage::cmdsavenames_Click);
    connect(ui->chkautoupdate, &QCheckBox::toggled, this, &PlayersPage::chkautoupdate_Click);
    wireList();
    wireActions();
    connect(&reader, &PlayerReader::statusrowread, this, qOverload<const StatusRow &>(&PlayersPage::add));
    connect(&reader, &PlayerReader::queryrowread, this, qOverload<const GetstatusRow &>(&PlayersPage::add));
    connect(&refresh, &PlayerRefresh::runningchanged, this, &PlayersPage::refreshchanged);
    connect(&refresh, &PlayerRefresh::kicked, this, [this](const QString &num) {
        if (const int row = players.rowOf(num); row >= 0)
            actions->removeRow(row);
    });
}

PlayersPage::~PlayersPage() = default;

void PlayersPage::wireList()
{
    connect(ui->msfplayers->horizontalHeader(), &QHeaderView::sectionClicked, this, &PlayersPage::sortOn);
    connect(ui->msfplayers, &PlayerView::menuwanted, this, [this](QPoint place) {
        showPlayerMenu(
            *ui->msfplayers, players, {ui->cmdplykick, ui->cmdplyban, ui->cmdtempban, ui->cmdplymessage},
            [this](const CheckedDeed &deed, const WantedPlayer &wanted) { checkAndAct(deed, wanted); },
            [this](const WantedPlayer &wanted) { emit whowanted(wanted); }, place);
    });
    connect(&checkedActions, &CheckedActions::answered, this, &PlayersPage::checkanswered);
    connect(&checkedActions, &CheckedActions::left, this,
            [this](const WantedPlayer &wanted) { actions->dropRow(wanted.listedNum, wanted.guid, wanted.shown); });
    connect(ui->txtplyfilter, &QLineEdit::textChanged, ui->msfplayers, &PlayerView::setFilter);
}

// For who keeps a book of what is done to whom.
void PlayersPage::wireActions()
{
    connect(&checkedActions, &CheckedActions::dismissing, this, &PlayersPage::acting);
    connect(&checkedActions, &CheckedActions::dismissed, this, &PlayersPage::acted);
    connect(&refresh, &PlayerRefresh::ended, this, &PlayersPage::acted);
    connect(&refresh, &PlayerRefresh::kicking, this,
            [this](const QString &command, const QString &name, const QString &num) {
                const int row = players.rowOf(num);
                const WantedPlayer counted = countedAs(name, num);
                emit kicking(command, counted, row < 0 ? counted : players.wanted(row));
            });
}

// Who is counted under that name is known by his name alone; the list tells the rest when he is the only one of it.
WantedPlayer PlayersPage::countedAs(const QString &name, const QString &num) const
{
    QList<WantedPlayer> called;
    for (int row = 0; row < players.rowCount(); ++row) {
        if (const WantedPlayer listed = players.wanted(row); trimBlanks(stripcolour(listed.name)) == name)
            called.append(listed);
    }
    WantedPlayer counted;
    counted.name = name;
    if (called.size() == 1)
        counted = called.first();
    counted.num = num;
    return counted;
}

void PlayersPage::focusFilter()
{
    ui->txtplyfilter->setFocus(Qt::ShortcutFocusReason);
    ui->txtplyfilter->selectAll();
}

void PlayersPage::showPreferences()
{
    const Preferences &options = services.session.options;
    ui->chkremcol->setChecked(options.removeid);
    ui->chkplyq->setChecked(options.usequery);
}

PlayerView &PlayersPage::view() const
{
    return *ui->msfplayers;
}

void PlayersPage::cmdplypop_Click()
{
    populate(BroughtBy::Person);
}

bool PlayersPage::populate(BroughtBy by)
{
    const bool isByHand = isAskedByHand();
    Reading scope(services, {.door = &populating,
                             .note = isByHand ? u"Asking server for player list..."_s : QString(),
                             .holdsTimersOff = false,
                             .by = by,
                             .label = ui->lblread_cmdplypop});
    if (!scope)
        return false;
    tells = isByHand;
    ++populates;
    if (players.rowCount() > 0)
        scrolled = ui->msfplayers->verticalScrollBar()->value();
    players.clear();
    rows.clear();
    refresh.beginPopulate(by);
    const bool isQuery = ui->chkplyq->isChecked();
    bool isAnswered = false;
    try {
        isAnswered = isQuery ? reader.readQuery(scope, by) : reader.readStatus(scope, by, [this] { return tells; });
        if (isAnswered)
            scope.setAnswered();
    } catch (const Fault &fault) {
        scope.endCollecting();
        services.prompts.showFault(fault, by);
    }
    ui->msfplayers->filterAdded();
    if (!scope.isLatest())
        return false;
    complayersort_Click();
    ui->msfplayers->clearSelection();
    ui->msfplayers->scrollBackTo(scrolled);
    const bool isWhole = isAnswered && !isQuery && services.session.connected;
    if (isWhole && (!rows.isEmpty() || isEmptyTable(services.session.rconreply)))
        emit populated(rows);
    return true;
}

void PlayersPage::add(const StatusRow &row)
{
    const int populate = populates;
    refresh.check999(stripcolour(row.name), row.ping, row.num);
    if (populate != populates)
        return; // it brought a box, and the list has been read anew meanwhile
    players.add({QString(), row.num, row.guid, actions->shownName(row.name), row.ping, row.score, row.address,
                 row.qport, row.rate},
                row.name, row.damage);
    rows.append(row);
}

void PlayersPage::add(const GetstatusRow &row)
{
    players.add({QString(), QString(), QString(), actions->shownName(row.name), row.ping, row.score});
}

void PlayersPage::complayersort_Click()
{
    showSorting();
    if (players.rowCount() < 2)
        return;
    const int column = ui->complayersort->currentIndex() + 1;
    players.sort(column, sortOrder(column));
}

// A click on a header chooses that column in the box. Two of the columns do not stand there.
void PlayersPage::sortOn(int column)
{
    if (column >= PlayerColumn::Num && column <= PlayerColumn::Rate)
        ui->complayersort->setCurrentIndex(column - 1);
    showSorting(); // the header has turned its arrow by itself
}

void PlayersPage::showSorting()
{
    const int chosen = ui->complayersort->currentIndex();
    QHeaderView *header = ui->msfplayers->horizontalHeader();
    header->setSortIndicatorShown(chosen >= 0);
    if (chosen >= 0)
        header->setSortIndicator(chosen + 1, sortOrder(chosen + 1));
}

void PlayersPage::startRefresh()
{
    if (services.session.options.autoqplayer)
        ui->chkautoupdate->setChecked(true);
}

void PlayersPage::endRefresh()
{
    ui->msfplayers->clearSelection(); // the next connection may be to another server
    if (!refresh.isRunning())
        return;
    ui->chkautoupdate->setChecked(false);
    services.session.options.autoqplayer = false;
    refresh.stop();
}

void PlayersPage::chkautoupdate_Click()
{
    const bool wanted = ui->chkautoupdate->isChecked();
    if (wanted && !services.session.connected) {
        ui->chkautoupdate->setChecked(false);
        return;
    }
    offerActions(!wanted);
    tells = tells && !wanted; // a list that is being read by hand becomes the one that is asked for here
    if (!wanted) {
        refresh.stop();
        return;
    }
    try {
        refresh.start();
        cmdplypop_Click();
    } catch (const Fault &fault) {
        services.prompts.showFault(fault); // connecting ticks the box too, and has more to do
    }
}

// Not while the list changes under the person's hands.
void PlayersPage::offerActions(bool on)
{
    for (QPushButton *button :
         {ui->cmdplypop, ui->cmdsavenames, ui->cmdplykick, ui->cmdplymessage, ui->cmdplyban, ui->cmdtempban})
        button->setEnabled(on);
}

void PlayersPage::checkAndAct(const CheckedDeed &deed, const WantedPlayer &wanted)
{
    if (deed.dismisses) {
        checkedActions.act(deed, wanted);
        return;
    }
    checkedActions.forget(); // the person may think better of it
    if (const std::optional<QString> message = actions->askMessage(actions->shownName(wanted.shown)))
        checkedActions.act(deed, wanted, *message);
}

void PlayersPage::cmdsavenames_Click()
{
    const Answer answer =
        services.prompts.ask({u"Save list"_s, u"Append current list of players and GUIDs to playerlist.csv"_s,
                              BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;

    const QString file = u"playerlist.csv"_s;
    const bool isThere = QFileInfo(file).isFile() && QFile(file).open(QIODevice::ReadOnly);
    const QString header =
        csvLine({u"Date/Time"_s, u"Server IP:Port"_s, u"Player IP"_s, u"Player GUID"_s, u"Player Name"_s});
    const std::optional<Fault> fault = appendToLog(
        file, (isThere ? QString() : header) +
                  csvRows(players, csvTime(services.clock.now()), services.fields.address(), ui->chkplyq->isChecked()));
    if (fault)
        services.prompts.showFault(*fault);
    else
        services.prompts.inform(u"Players appended"_s, u"Players saved"_s);
}

bool PlayersPage::isAskedByHand() const
{
    return !services.session.options.autoqplayer && !ui->chkautoupdate->isChecked();
}
