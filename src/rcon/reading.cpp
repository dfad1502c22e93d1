// SPDX-License-Identifier: MIT
#include "reading.h"

#include "base/clock.h"
#include "base/focus.h"
#include "base/prompts.h"
#include "read_label.h"
#include "services.h"
#include "session.h"
#include "udp_client.h"

using namespace Qt::StringLiterals;

namespace {

bool requireConnection(const Services &services, BroughtBy by)
{
    if (!services.session.connected)
        services.prompts.refuse(u"You need to connect to a server first"_s, u"Not Connected"_s, by);
    return services.session.connected;
}

} // namespace

FlagHolder::FlagHolder(ServerLink::HeldFlag &flag_, const ServerLink::Epoch &epoch_) : flag(flag_), epoch(epoch_)
{
    flag.holders.append(epoch);
    flag.value = true;
}

FlagHolder::~FlagHolder()
{
    flag.holders.removeOne(epoch);
    if (!flag.holders.contains(epoch) && !isLeftSet)
        flag.value = false;
}

TimersHeldOff::TimersHeldOff(const Services &services) : busy(services.link.busy, services.link.epoch(services.clock))
{
}

PageAtWork::PageAtWork(const Services &services) : link(services.link), epoch(link.epoch(services.clock))
{
    link.pages.append(epoch);
}

PageAtWork::~PageAtWork()
{
    link.pages.removeOne(epoch);
}

Reading::Reading(const Services &services_, const Style &style) : services(services_), label(style.label)
{
    if (style.door && !guard.emplace(*style.door, services.clock, services.prompts))
        return;
    if (style.needsConnection && !requireConnection(services, style.by))
        return;
    isBegun = true;
    const ServerLink::Epoch epoch = services.link.epoch(services.clock);
    collecting.emplace(services.link.collecting, epoch);
    if (!style.note.isEmpty())
        showNote(style.note, epoch);
    if (style.holdsTimersOff)
        busy.emplace(services.link.busy, epoch);
    stepsBefore = services.link.exchange.beginSteps({.of = style.steps});
}

void Reading::showNote(const QString &note, const ServerLink::Epoch &epoch)
{
    if (services.link.notes.contains(epoch))
        noteBefore = services.output.progressnote();
    services.link.notes.append(epoch);
    noted.emplace(services.output);
    services.output.showprogress(note, Progress::Replace);
}

Reading::~Reading()
{
    if (isBegun)
        services.link.exchange.beginSteps(stepsBefore);
    if (noted)
        endNote();
    if (isBegun && label && isLatest())
        endLabel();
}

// A page that was read in part shows nothing that could be relied on.
void Reading::endLabel()
{
    if (isAnswered && services.session.connected)
        label->setRead(services.clock.now().time());
    else
        label->forget();
}

void Reading::endNote()
{
    services.link.notes.removeLast();
    if (programMinimised())
        noteBefore.clear(); // it would be dropped, and this one stay
    services.output.showprogress(noteBefore, Progress::Replace);
}
