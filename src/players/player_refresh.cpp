// SPDX-License-Identifier: MIT
#include "player_refresh.h"

#include "base/fault.h"
#include "base/numbers.h"
#include "base/prompts.h"
#include "rcon/conversation.h"
#include "rcon/services.h"
#include "rcon/session.h"

#include <utility>

using namespace Qt::StringLiterals;

PlayerRefresh::PlayerRefresh(Services &services_, std::function<bool()> populate_, QObject *parent)
    : QObject(parent), services(services_), populate(std::move(populate_)), tmrplayer(this)
{
    tmrplayer.setObjectName(u"tmrplayer"_s);
    connect(&tmrplayer, &QTimer::timeout, this, &PlayerRefresh::tmrplayer_Timer);
}

void PlayerRefresh::start()
{
    qint16 &seconds = services.session.options.autoqplayerint;
    if (seconds < 5 || seconds > 40)
        seconds = 30;
    tmrplayer.start(product16(seconds, 1000)); // overflows from 33 seconds on
    emit runningchanged(seconds);
}

void PlayerRefresh::stop()
{
    tmrplayer.stop();
    emit runningchanged(0);
}

void PlayerRefresh::takePreferences()
{
    if (!services.session.options.autokick999)
        list999 = {};
}

void PlayerRefresh::beginPopulate(BroughtBy by)
{
    populatedBy = by;
    takePreferences();
    list999.unsee();
}

void PlayerRefresh::check999(const QString &name, const QString &ping, const QString &num)
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
                                u"ADD999 Error"_s, populatedBy);
    }
}

void PlayerRefresh::tmrplayer_Timer()
{
    const ReentrancyGuard tick(ticking, services.clock, services.prompts);
    if (!tick || services.session.rconbusy)
        return;
    const Conversation talk(services, BroughtBy::Tick);
    if (!populate())
        return;
    kickHanging(talk, tick);
    if (tick.isLatest())
        list999.sweep();
}

void PlayerRefresh::kickHanging(const Conversation &talk, const ReentrancyGuard &tick)
{
    const Preferences &options = services.session.options;
    for (qsizetype index = 0; index < list999.records().size() && talk.isOpen() && tick.isLatest(); ++index) {
        const Rec999 record = list999.records().at(index);
        if (!options.autokick999 || !record.seen || record.hits < options.autokick999int)
            continue;
        const QString command = u"clientkick "_s + record.pnum;
        emit kicking(command, record.pname, record.pnum);
        talk.tell(command);
        emit ended(command);
        if (talk.isSuperseded() || !tick.isLatest())
            return; // the list is another one by now
        talk.note(u"Player Auto Kicked for 999 ping ["_s + record.pname + u']');
        emit kicked(record.pnum);
    }
}
