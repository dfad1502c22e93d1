// SPDX-License-Identifier: MIT
#include "check_runner.h"

#include "base/fault.h"
#include "base/wire_text.h"
#include "rcon/datagram_header.h"
#include "rcon/pace.h"

#include <QHostInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QByteArray printed = datagramHeader + "print\n";
const QByteArray variable(askedVariable.data(), askedVariable.size());
const QByteArray longCommand = "dvarlist s*";

// In milliseconds.
constexpr int behindDatagram = 1000;
constexpr int forListing = 4000; // all of it, behind the wait for its beginning

// More than the longest list of variables, many times.
constexpr qsizetype mostDatagrams = 1000;
constexpr qsizetype mostBytes = 1'000'000;
constexpr qsizetype keptAtEnds = 2000; // characters: how it begins and how it ends is all that is looked at

QString preferred(const QList<QHostAddress> &addresses)
{
    const auto isIPv4 = [](const QHostAddress &address) { return address.protocol() == QAbstractSocket::IPv4Protocol; };
    const auto found = std::ranges::find_if(addresses, isIPv4);
    return (found != addresses.end() ? *found : addresses.value(0)).toString();
}

} // namespace

CheckRunner::CheckRunner(const CheckPatience &patience_, CheckPace pace_, QObject *parent)
    : QObject(parent), patience(patience_), pace(std::move(pace_))
{
    tmrcheck.setObjectName(u"tmrcheck"_s);
    tmrcheck.setParent(this);
    tmrcheck.setSingleShot(true);
    connect(&tmrcheck, &QTimer::timeout, this, &CheckRunner::timeOut);
    tmrlisting.setObjectName(u"tmrlisting"_s);
    tmrlisting.setParent(this);
    tmrlisting.setSingleShot(true);
    connect(&tmrlisting, &QTimer::timeout, this, &CheckRunner::timeOut);
    connect(&link, &UDPClient::DataArrival, this, &CheckRunner::arrive);
    connect(&link, &UDPClient::datagramsent, this,
            [this](const QByteArray &datagram) { emit datagramsent(datagram, password); });
    connect(&link, &UDPClient::datagramread, this, &CheckRunner::datagramread);
}

void CheckRunner::start(const QString &server_, const QString &port_, const QString &password_)
{
    stop();
    server = trimBlanks(server_);
    port = trimBlanks(port_);
    password = trimBlanks(password_);
    query = {};
    console = {};
    words.reset();
    stage = Stage::LookUp;
    if (const std::optional<CheckStep> complaint = fieldsStep(server, port, password)) {
        finish(*complaint);
        return;
    }
    since.start();
    if (!QHostAddress(server).isNull()) {
        goOnTo(server);
        return;
    }
    ++lookUps;
    QHostInfo::lookupHost(server, this, [this, mine = ++run](const QHostInfo &info) {
        --lookUps;
        if (mine == run && stage == Stage::LookUp)
            takeAddresses(info);
    });
}

void CheckRunner::stop()
{
    ++run;
    tmrcheck.stop();
    tmrlisting.stop();
    link.Abandon();
    isHeldBack = false;
    stage = Stage::Idle;
    sizes.clear();
    listing.clear();
    came = 0;
}

void CheckRunner::takeAddresses(const QHostInfo &info)
{
    const QString address = info.addresses().isEmpty() ? QString() : preferred(info.addresses());
    if (address.isEmpty())
        finish(lookUpStep(server, {}, since.elapsed()));
    else
        goOnTo(address);
}

void CheckRunner::goOnTo(const QString &address)
{
    emit stepped(lookUpStep(server, address, since.elapsed()));
    link.setRemoteHost(address);
    link.setRemotePort(port.toInt());
    try {
        link.Bind();
    } catch (const Fault &) {
        // Then nothing can be sent, as the next step says.
    }
    ask("getstatus", Stage::Query, patience.query);
}

void CheckRunner::enter(Stage next, int milliseconds)
{
    stage = next;
    tmrcheck.start(milliseconds);
}

void CheckRunner::ask(const QByteArray &text_, Stage next, const CheckPatience::Question &how_)
{
    text = text_;
    how = how_;
    copiesSent = 0;
    stage = next;
    send();
}

// Others may send something while it is held back, and it waits for its turn anew.
void CheckRunner::send()
{
    const bool isCommand = stage != Stage::Query && pace.left;
    const qint64 left = isCommand ? pace.left() : 0;
    isHeldBack = left > 0;
    tmrcheck.start(isHeldBack ? static_cast<int>(left) : how.milliseconds);
    if (isHeldBack)
        return;
    if (++copiesSent == 1) {
        since.start();
        if (stage == Stage::Listing)
            tmrlisting.start(how.copies * how.milliseconds + forListing);
    }
    try {
        link.SendData(datagramHeader + text);
        if (isCommand)
            pace.taken();
    } catch (const Fault &) {
        (stage == Stage::Query ? query : console).couldBeSent = false;
        copiesSent = how.copies;
        tmrcheck.start(0);
    }
}

void CheckRunner::askConsole(const QByteArray &command, Stage next, const CheckPatience::Question &how_)
{
    ask("rcon " + toAnsi(password) + ' ' + command, next, how_);
}

/// True when a further copy goes out.
bool CheckRunner::askAgain()
{
    if (copiesSent >= how.copies)
        return false;
    send();
    return true;
}

void CheckRunner::timeOut()
{
    if (isHeldBack) {
        send();
        return;
    }
    switch (stage) {
    case Stage::Idle:
    case Stage::LookUp:
        return;
    case Stage::Query:
        if (!askAgain())
            endQuery();
        return;
    case Stage::Console:
        if (!askAgain())
            endConsole();
        return;
    case Stage::Pause:
        return askConsole(longCommand, Stage::Listing, patience.listing);
    case Stage::Listing:
        if (!sizes.isEmpty() || !askAgain())
            finish(listingStep(sizes, listing));
        return;
    }
}

void CheckRunner::arrive()
{
    QByteArray datagram;
    try {
        link.GetData(datagram);
    } catch (const Fault &) {
        // It was too large, and its first part is as good.
    }
    if (stage == Stage::Query)
        takeQuery(datagram);
    else if (stage == Stage::Console)
        takeConsole(datagram);
    else if (stage == Stage::Listing)
        takeListing(datagram);
}

void CheckRunner::takeQuery(const QByteArray &datagram)
{
    if (!datagram.startsWith(datagramHeader + "statusResponse"))
        return;
    query.answeredAfter = since.elapsed();
    endQuery();
}

void CheckRunner::endQuery()
{
    emit stepped(queryStep(query));
    askConsole(variable, Stage::Console, patience.console);
}

void CheckRunner::takeConsole(const QByteArray &datagram)
{
    if (!datagram.startsWith(printed))
        return;
    console.answeredAfter = since.elapsed();
    words = fromAnsi(datagram.sliced(printed.size()));
    endConsole();
}

void CheckRunner::endConsole()
{
    emit stepped(consoleStep(console, words.value_or(QString()), password, query.answeredAfter.has_value()));
    if (words && !refusesInAnyWording(*words))
        enter(Stage::Pause, betweenCommands);
    else
        finish(noListingStep());
}

// The answer to the second of two copies can come only now.
void CheckRunner::takeListing(const QByteArray &datagram)
{
    const bool isOfVariable =
        datagram.startsWith(printed + '"' + variable) || datagram.startsWith(printed + "Unknown command \"" + variable);
    if (!datagram.startsWith(printed) || isOfVariable)
        return;
    sizes.append(datagram.size());
    came += datagram.size();
    keepEnd(datagram.sliced(printed.size()));
    if (sizes.size() == mostDatagrams || came >= mostBytes)
        finish(endlessStep(sizes));
    else
        tmrcheck.start(behindDatagram);
}

void CheckRunner::keepEnd(const QByteArray &part)
{
    listing += fromAnsi(part);
    if (listing.size() > 2 * keptAtEnds)
        listing.remove(keptAtEnds, listing.size() - 2 * keptAtEnds);
}

void CheckRunner::finish(const CheckStep &step)
{
    stop();
    emit stepped(step);
    emit ended();
}
