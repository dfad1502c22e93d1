// SPDX-License-Identifier: MIT
#include "players_page.h"
#include "ui_players_page.h"

#include "base/fault.h"
#include "base/numbers.h"
#include "base/once.h"
#include "base/prompts.h"
#include "colour_codes.h"
#include "getstatus_reply.h"
#include "output/output.h"
#include "rcon/exchange.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "rcon/udp_client.h"
#include "status_table.h"

#include <QScopeGuard>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Room for as many characters as the header text has, blanks included.
int columnWidth(const QTableView &grid, int column)
{
    const QFontMetrics metrics = grid.fontMetrics();
    const int margins = 2 * (grid.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &grid) + 1);
    const QString header = grid.model()->headerData(column, Qt::Horizontal).toString();
    const int room = static_cast<int>(header.size()) * metrics.horizontalAdvance(u'x');
    const int text = std::max(room, metrics.horizontalAdvance(header)) + margins;
    return std::max(text, grid.horizontalHeader()->sectionSizeHint(column)); // some styles keep wide margins in headers
}

} // namespace

PlayersPage::PlayersPage(Services &services_, const ConnectPanel &connectPanel_, QWidget *parent)
    : QWidget(parent),
      services(services_),
      connectPanel(connectPanel_),
      ui(std::make_unique<Ui::PlayersPage>()),
      players(this),
      tmrplayer(this)
{
    ui->setupUi(this);
    ui->msfplayers->setModel(&players);
    ui->msfplayers->verticalHeader()->setDefaultSectionSize(ui->msfplayers->fontMetrics().height() + 4);
    for (int column = 0; column < PlayerColumn::Count; ++column)
        ui->msfplayers->setColumnWidth(column, columnWidth(*ui->msfplayers, column));
    ui->complayersort->setCurrentIndex(-1); // the server's own order
    tmrplayer.setObjectName(u"tmrplayer"_s);

    connect(ui->cmdplypop, &QPushButton::clicked, this, &PlayersPage::cmdplypop_Click);
    connect(ui->complayersort, &QComboBox::currentIndexChanged, this, &PlayersPage::complayersort_Click);
    connect(ui->cmdplykick, &QPushButton::clicked, this, &PlayersPage::cmdplykick_Click);
    connect(ui->cmdplyban, &QPushButton::clicked, this, &PlayersPage::cmdplyban_Click);
    connect(ui->cmdtempban, &QPushButton::clicked, this, &PlayersPage::cmdtempban_Click);
    connect(ui->cmdplymessage, &QPushButton::clicked, this, &PlayersPage::cmdplymessage_Click);
    connect(ui->cmdsavenames, &QPushButton::clicked, this, &PlayersPage::cmdsavenames_Click);
    connect(ui->chkautoupdate, &QCheckBox::toggled, this, &PlayersPage::chkautoupdate_Click);
    connect(&tmrplayer, &QTimer::timeout, this, &PlayersPage::tmrplayer_Timer);
}

PlayersPage::~PlayersPage() = default;

// The names take what room there is beyond the columns.
void PlayersPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    QTableView &grid = *ui->msfplayers;
    const int others = grid.horizontalHeader()->length() - grid.columnWidth(PlayerColumn::Player);
    const int spare = grid.maximumViewportSize().width() - others - grid.verticalScrollBar()->sizeHint().width();
    grid.setColumnWidth(PlayerColumn::Player, std::max(spare, columnWidth(grid, PlayerColumn::Player)));
}

void PlayersPage::showPreferences()
{
    const Preferences &options = services.session.options;
    ui->chkremcol->setChecked(options.removeid);
    ui->chkplyq->setChecked(options.usequery);
}

void PlayersPage::cmdplypop_Click()
{
    const Once once(populatingSince, services.clock);
    if (!once)
        return;
    if (!services.session.connected) {
        services.prompts.refuse(u"You need to connect to a server first"_s, u"Not Connected"_s);
        return;
    }

    players.clear();
    const bool isTold = isAskedByHand();
    if (isTold)
        services.output.showprogress(u"Asking server for player list..."_s, Progress::Replace);
    if (services.session.options.autokick999)
        list999.unsee();
    try {
        if (ui->chkplyq->isChecked())
            listByQuery();
        else
            listByStatus(isTold);
    } catch (const Fault &fault) {
        services.prompts.showFault(fault);
    }
    complayersort_Click();
    ui->msfplayers->clearSelection();
    if (isTold)
        services.output.showprogress({}, Progress::Replace);
}

void PlayersPage::listByStatus(bool isTold)
{
    Session &session = services.session;
    const int link = services.udpclient.link();
    session.rconcollect = true;
    const auto collected = qScopeGuard([&session] { session.rconcollect = false; });
    services.exchange.sendinfo(u"status"_s, true);
    services.exchange.waitseconds(1); // a long table comes in many datagrams
    if (!isOnLink(link))
        return;

    const int exchange = services.exchange.exchanges();
    StatusTable table;
    if (!table.skipHeading(session.rconreply)) {
        if (isTold)
            services.prompts.inform(u"No players on server"_s, u"No players"_s);
        return;
    }
    int tries = 0;
    while (!table.ended(session.rconreply)) {
        try {
            add(table.next(session.rconreply));
        } catch (const Fault &) {
            if (!awaitRest(isTold, tries) || !isOnLink(link) || services.exchange.exchanges() != exchange)
                return; // also when another command has emptied the reply: its rest will not come
        }
    }
}

bool PlayersPage::awaitRest(bool isTold, int &tries)
{
    constexpr int mostTries = 5;
    if (isTold)
        services.prompts.refuse(u"The server is not responding quickly enough\rTry populate again"_s,
                                u"Slow Server Response"_s);
    else if (++tries > mostTries)
        return false;
    // By hand too: between two boxes the person can disconnect or close the window.
    services.exchange.waitseconds(1);
    return true;
}

void PlayersPage::listByQuery()
{
    Session &session = services.session;
    const int link = services.udpclient.link();
    const bool silent = session.options.autoqplayer; // a ticked "Auto Update" alone does not silence this list
    session.rconarrived = false;
    session.rconcollect = true;
    session.rconreply.clear();
    const auto collected = qScopeGuard([&session] { session.rconcollect = false; });

    services.exchange.sendquery(u"getstatus"_s);
    for (int pass = 0; pass < 5 && !session.rconarrived && isOnLink(link); ++pass) {
        services.exchange.waitseconds(1);
        services.exchange.yield();
    }
    if (!isOnLink(link))
        return;
    if (!session.rconarrived) {
        if (!silent)
            services.prompts.refuse(u"No response from server in 5 seconds with standard Query method"_s,
                                    u"No response"_s);
        return;
    }

    GetstatusReply reply(session.rconreply);
    if (reply.isEmpty()) {
        if (!silent)
            services.prompts.inform(u"No players on server"_s, u"No players"_s);
        return;
    }
    while (const std::optional<GetstatusRow> row = reply.next())
        add(*row);
}

void PlayersPage::add(const StatusRow &row)
{
    check999(stripcolour(row.name), row.ping, row.num);
    players.add(
        {QString(), row.num, row.guid, shownName(row.name), row.ping, row.score, row.address, row.qport, row.rate});
}

void PlayersPage::add(const GetstatusRow &row)
{
    players.add({QString(), QString(), QString(), shownName(row.name), row.ping, row.score});
}

void PlayersPage::complayersort_Click()
{
    if (players.rowCount() < 2)
        return;
    const int column = ui->complayersort->currentIndex() + 1;
    players.sort(column, column == PlayerColumn::Score ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void PlayersPage::startRefresh()
{
    if (services.session.options.autoqplayer)
        ui->chkautoupdate->setChecked(true);
}

void PlayersPage::endRefresh()
{
    ui->msfplayers->clearSelection(); // the next connection may be to another server
    if (!tmrplayer.isActive())
        return;
    ui->chkautoupdate->setChecked(false);
    services.session.options.autoqplayer = false;
    tmrplayer.stop();
}

void PlayersPage::chkautoupdate_Click()
{
    const bool wanted = ui->chkautoupdate->isChecked();
    if (wanted && !services.session.connected) {
        ui->chkautoupdate->setChecked(false);
        return;
    }
    // The list changes under the person's hands, so nothing that acts on a row is offered.
    for (QPushButton *button :
         {ui->cmdplypop, ui->cmdsavenames, ui->cmdplykick, ui->cmdplymessage, ui->cmdplyban, ui->cmdtempban})
        button->setEnabled(!wanted);
    if (!wanted) {
        tmrplayer.stop();
        return;
    }
    try {
        startTimer();
        cmdplypop_Click();
    } catch (const Fault &fault) {
        services.prompts.showFault(fault); // connecting ticks the box too, and has more to do
    }
}

void PlayersPage::startTimer()
{
    qint16 &seconds = services.session.options.autoqplayerint;
    if (seconds < 5 || seconds > 40)
        seconds = 30;
    tmrplayer.start(product16(seconds, 1000)); // overflows from 33 seconds on
}

void PlayersPage::tmrplayer_Timer()
{
    const Once once(refreshingSince, services.clock);
    if (!once || services.session.rconbusy || populatingSince == services.clock.now().date())
        return;
    const int link = services.udpclient.link();
    cmdplypop_Click();
    kickHanging(link);
    list999.sweep();
}

void PlayersPage::kickHanging(int link)
{
    const qint16 &enough = services.session.options.autokick999int;
    for (qsizetype index = 0; index < list999.records().size() && isOnLink(link); ++index) {
        const Rec999 record = list999.records().at(index);
        if (!record.seen || record.hits < enough)
            continue;
        services.exchange.sendinfo(u"clientkick "_s + record.pnum);
        services.output.addmessage(u"Player Auto Kicked for 999 ping ["_s + record.pname + u']');
        if (const int row = players.rowOf(record.pnum); row >= 0)
            removeRow(row);
    }
}

void PlayersPage::check999(const QString &name, const QString &ping, const QString &num)
{
    if (!services.session.options.autokick999)
        return;
    try {
        list999.check999(name, ping, num);
    } catch (const Fault &fault) {
        services.prompts.refuse(u"Error in ADD999 Routines\rError code %1 Descr: %2\rSection %3\r"
                                "LBound Player999 1\rUBound Player999 %4"_s.arg(fault.number())
                                    .arg(fault.description(), list999.section())
                                    .arg(list999.records().size()),
                                u"ADD999 Error"_s);
    }
}

QString PlayersPage::shownName(const QString &name) const
{
    return ui->chkremcol->isChecked() ? stripcolour(name) : name;
}

bool PlayersPage::isAskedByHand() const
{
    return !services.session.options.autoqplayer && !ui->chkautoupdate->isChecked();
}

bool PlayersPage::isOnLink(int link) const
{
    const Session &session = services.session;
    return session.connected && !session.closing && services.udpclient.link() == link;
}
