// SPDX-License-Identifier: MIT
#include "players_page.h"
#include "ui_players_page.h"

#include "base/fault.h"
#include "base/prompts.h"
#include "rcon/services.h"
#include "rcon/session.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

// The interval is formed in 16 bits, so 33 seconds and more overflow.
int milliseconds(qint16 seconds)
{
    const int product = seconds * 1000;
    if (product > std::numeric_limits<qint16>::max())
        throw Fault(Fault::Overflow);
    return product;
}

} // namespace

PlayersPage::PlayersPage(Services &services_, QWidget *parent)
    : QWidget(parent), services(services_), ui(std::make_unique<Ui::PlayersPage>()), tmrplayer(this)
{
    ui->setupUi(this);
    ui->chkautoupdate->hide();
    tmrplayer.setObjectName(u"tmrplayer"_s);
    connect(ui->chkautoupdate, &QCheckBox::toggled, this, &PlayersPage::chkautoupdate_Click);
}

PlayersPage::~PlayersPage() = default;

void PlayersPage::startRefresh()
{
    if (services.session.options.autoqplayer)
        ui->chkautoupdate->setChecked(true);
}

void PlayersPage::endRefresh()
{
    if (!tmrplayer.isActive())
        return;
    ui->chkautoupdate->setChecked(false);
    services.session.options.autoqplayer = false;
    tmrplayer.stop();
}

void PlayersPage::chkautoupdate_Click()
{
    if (!ui->chkautoupdate->isChecked()) {
        tmrplayer.stop();
        return;
    }
    if (!services.session.connected) {
        ui->chkautoupdate->setChecked(false);
        return;
    }
    try {
        startTimer();
    } catch (const Fault &fault) {
        services.prompts.showFault(fault); // connecting ticks the box too, and has more to do
    }
}

void PlayersPage::startTimer()
{
    qint16 &seconds = services.session.options.autoqplayerint;
    if (seconds < 5 || seconds > 40)
        seconds = 30;
    tmrplayer.start(milliseconds(seconds));
}
