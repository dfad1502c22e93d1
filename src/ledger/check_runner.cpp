// SPDX-License-Identifier: MIT
#include "check_runner.h"

#include "base/fault.h"
#include "base/wire_text.h"

#include <QHostInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QByteArray header(4, '\xFF');
const QByteArray printed = header + "print\n";
const QByteArray variable(askedVariable.data(), askedVariable.size());
const QByteArray longCommand = "dvarlist s*";

// In milliseconds. The strictest servers hear one command in half a second, and the latest answers known come after
// five.
constexpr int forQuery = 3000;
constexpr int forCommand = 6000;
constexpr int betweenCommands = 750;
constexpr int behindDatagram = 1000;
constexpr int forListing = 10'000; // all of it

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

CheckRunner::CheckRunner(const Turn &turn_, QObject *parent) : QObject(parent), turn(turn_)
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
    ask("getstatus", Stage::Query, forQuery);
}

void CheckRunner::enter(Stage next, int milliseconds)
{
    stage = next;
    tmrcheck.start(milliseconds);
}

void CheckRunner::ask(const QByteArray &text, Stage next, int milliseconds)
{
    enter(next, milliseconds);
    if (next == Stage::Listing)
        tmrlisting.start(forListing);
    if (next != Stage::ConsoleAgain)
        since.start();
    try {
        link.SendData(header + text);
    } catch (const Fault &) {
        (next == Stage::Query ? query : console).couldBeSent = false;
        tmrcheck.start(0);
    }
}

// The program may send something meanwhile, which is waited for anew.
void CheckRunner::askConsole(const Question &asked)
{
    question = asked;
    if (const qint64 left = turn.left(); left > 0) {
        enter(Stage::Turn, static_cast<int>(left));
        return;
    }
    ask("rcon " + toAnsi(password) + ' ' + question.command, question.stage, forCommand);
    if (console.couldBeSent)
        turn.taken();
}

void CheckRunner::timeOut()
{
    switch (stage) {
    case Stage::Idle:
    case Stage::LookUp:
        return;
    case Stage::Query:
        return endQuery();
    case Stage::Console: // perhaps somebody else had used up the server's limit
        return console.couldBeSent ? askConsole({variable, Stage::ConsoleAgain}) : endConsole({});
    case Stage::ConsoleAgain:
        return endConsole({});
    case Stage::Turn:
        return askConsole(question);
    case Stage::Pause:
        return askConsole({longCommand, Stage::Listing});
    case Stage::Listing:
        return finish(listingStep(sizes, listing));
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
    else if (isForConsole())
        takeConsole(datagram);
    else if (stage == Stage::Listing)
        takeListing(datagram);
}

void CheckRunner::takeQuery(const QByteArray &datagram)
{
    if (!datagram.startsWith(header + "statusResponse"))
        return;
    query.answeredAfter = since.elapsed();
    endQuery();
}

void CheckRunner::endQuery()
{
    emit stepped(queryStep(query));
    askConsole({variable, Stage::Console});
}

// The answer to the first copy may come while the second waits for its turn.
bool CheckRunner::isForConsole() const
{
    const Stage asked = stage == Stage::Turn && question.stage == Stage::ConsoleAgain ? question.stage : stage;
    return asked == Stage::Console || asked == Stage::ConsoleAgain;
}

void CheckRunner::takeConsole(const QByteArray &datagram)
{
    if (!datagram.startsWith(printed))
        return;
    console.answeredAfter = since.elapsed();
    endConsole(fromAnsi(datagram.sliced(printed.size())));
}

void CheckRunner::endConsole(const QString &words)
{
    emit stepped(consoleStep(console, words, password, query.answeredAfter.has_value()));
    if (console.answeredAfter && !refusesInAnyWording(words))
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

void CheckRunner::keepEnd(const QByteArray &text)
{
    listing += fromAnsi(text);
    if (listing.size() > 2 * keptAtEnds)
        listing.remove(keptAtEnds, listing.size() - 2 * keptAtEnds);
}

void CheckRunner::finish(const CheckStep &step)
{
    stop();
    emit stepped(step);
    emit ended();
}
