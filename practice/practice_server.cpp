// SPDX-License-Identifier: MIT
#include "practice_server.h"

#include "base/datagram_socket.h"
#include "base/wire_text.h"
#include "command_words.h"
#include "datagrams.h"

#include <QNetworkDatagram>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestDatagram = 65535;
constexpr qsizetype mostWaiting = 10; // what the small buffer of a real server's socket holds

constexpr std::chrono::milliseconds leastLate(3000);
constexpr std::chrono::milliseconds mostLate(5000);

QString refusalLine(const QString &refusal)
{
    return refusal == "Bad rcon"_L1 ? refusal : refusal + u'\n'; // that one comes without, where it is said
}

} // namespace

PracticeServer::PracticeServer(const PracticeOptions &options_, QObject *parent)
    : QObject(parent),
      options(options_),
      gameServer(options_),
      rateLimit(options_.rate),
      random(options_.seed),
      lateness(options_.seed)
{
    connect(&socket, &QUdpSocket::readyRead, this, &PracticeServer::readRequests);
}

PracticeServer::~PracticeServer() = default;

bool PracticeServer::listen(const QHostAddress &address, quint16 port)
{
    if (!socket.bind(address, port, QAbstractSocket::DontShareAddress))
        return false;
    ignoreClosedPorts(socket.socketDescriptor()); // whoever asked may be gone
    return true;
}

void PracticeServer::close()
{
    socket.close();
    waiting.clear();
    departures.clear();
}

quint16 PracticeServer::port() const
{
    return socket.localPort();
}

QString PracticeServer::errorString() const
{
    return socket.errorString();
}

QList<QByteArray> PracticeServer::commands() const
{
    QList<QByteArray> commands;
    for (const QByteArray &datagram : received)
        commands.append(readRequest(datagram).command);
    return commands;
}

void PracticeServer::setPassword(const QString &password)
{
    gameServer.dvars().set(u"rcon_password"_s, password);
}

void PracticeServer::answer(const QByteArray &command, const QList<QByteArray> &datagramTexts)
{
    QList<QByteArray> datagrams;
    for (const QByteArray &text : datagramTexts)
        datagrams.append(printDatagram(text));
    answerRaw(command, datagrams);
}

void PracticeServer::answerRaw(const QByteArray &command, const QList<QByteArray> &datagrams)
{
    preparedAnswers.insert(command, datagrams);
}

void PracticeServer::answerAsUsual(const QByteArray &command)
{
    preparedAnswers.remove(command);
}

bool PracticeServer::sendRaw(const QByteArray &datagram)
{
    return !lastClient.address.isNull() &&
           socket.writeDatagram(datagram, lastClient.address, lastClient.port) == datagram.size();
}

// Reads until a read comes back empty: only that makes the socket listen again.
// Reads at once, since a notification that waits can silence the socket, and takes each request from the event loop, so
// that a client in the same process gets its answers also while it waits inside a slot of this server.
void PracticeServer::readRequests()
{
    while (true) {
        const QNetworkDatagram datagram = socket.receiveDatagram(largestDatagram);
        if (!datagram.isValid())
            return;
        const Client client{datagram.senderAddress(), static_cast<quint16>(datagram.senderPort())};
        QMetaObject::invokeMethod(
            this, [this, arrival = Arrival{datagram.data(), client}] { take(arrival); }, Qt::QueuedConnection);
    }
}

void PracticeServer::take(const Arrival &arrival)
{
    received.append(arrival.datagram);
    lastClient = arrival.client;
    emit requested(arrival.datagram);
    if (options.silent || isLost()) {
        tellUnanswered(arrival, options.silent ? u"the server is silent"_s : u"lost"_s);
        return;
    }
    waiting.append(arrival);
    if (loading && waiting.size() > mostWaiting)
        tellUnanswered(waiting.takeFirst(), u"too many came while a map is loading"_s);
    answerWaiting();
}

// A request that loads a map keeps those behind it waiting.
void PracticeServer::answerWaiting()
{
    while (!loading && !waiting.isEmpty())
        answerOne(waiting.takeFirst());
}

void PracticeServer::answerOne(const Arrival &arrival)
{
    const auto &[datagram, client] = arrival;
    const Request request = readRequest(datagram, options);
    if (!rateLimit.admits(request.kind, client.address, departures.now()))
        tellUnanswered(arrival, u"too soon after others"_s);
    else if (recorded)
        takeRecorded(datagram, client);
    else if (request.kind == Request::Kind::Rcon)
        takeRcon(request, readRequest(datagram).command, client);
    else if (request.kind == Request::Kind::Status)
        takeStatus(client);
    else
        emit happened(client.text() + u"%1 bytes that are no request"_s.arg(datagram.size()));
}

void PracticeServer::tellUnanswered(const Arrival &arrival, const QString &why)
{
    emit happened(arrival.client.text() + u"request of %1 bytes not answered: "_s.arg(arrival.datagram.size()) + why);
}

void PracticeServer::takeRecorded(const QByteArray &datagram, const Client &client)
{
    const QString asked = withoutSecrets(fromAnsi(readRequest(datagram).command));
    emit happened(client.text() + asked + (recorded->knows(datagram) ? u""_s : u" is not in the recording"_s));
    const Replay::Answer answer = recorded->next(datagram);
    for (const auto &[after, piece] : answer) {
        if (isLost())
            emit happened(client.text() + u"reply of %1 bytes lost"_s.arg(piece.size()));
        else
            sendLater(after, piece, client);
    }
}

void PracticeServer::takeRcon(const Request &request, const QByteArray &commandAsSent, const Client &client)
{
    const QString wanted = gameServer.dvars().value(u"rcon_password"_s);
    if (wanted.isEmpty() || fromAnsi(request.password) != wanted) {
        emit happened(client.text() + u"rcon with a wrong password"_s);
        reply(wanted.isEmpty() ? u"No rconpassword set on the server.\n"_s : refusalLine(options.refusal), client);
        return;
    }
    emit happened(client.text() + u"rcon "_s + withoutSecrets(fromAnsi(request.command)));
    if (answerCanned(commandAsSent, client))
        return;
    const CommandResult result = gameServer.execute(fromAnsi(request.command));
    if (!result.event.isEmpty())
        emit happened(result.event);
    if (result.loads)
        startLoading(result.reply, client);
    else
        reply(result.reply, client);
}

void PracticeServer::takeStatus(const Client &client)
{
    emit happened(client.text() + u"getstatus"_s);
    if (!answerCanned("getstatus", client))
        post({plainDatagram(toAnsi(gameServer.statusResponse()))}, client);
}

bool PracticeServer::answerCanned(const QByteArray &command, const Client &client)
{
    const auto canned = preparedAnswers.constFind(command);
    if (canned == preparedAnswers.constEnd())
        return false;
    post(*canned, client);
    return true;
}

// What the server printed while it loaded comes as a late reply, and then the answers to what came meanwhile.
void PracticeServer::startLoading(const QString &log, const Client &client)
{
    if (options.mapLoadMs <= 0) {
        reply(log, client);
        return;
    }
    loading = true;
    QTimer::singleShot(options.mapLoadMs, this, [this, log, client] {
        loading = false;
        emit happened(u"the map is loaded"_s);
        reply(log, client);
        answerWaiting();
    });
}

void PracticeServer::reply(const QString &text, const Client &client)
{
    const QByteArray bytes = toAnsi(text);
    if (options.loseAtBorder)
        post(losingPrintDatagrams(bytes), client);
    else
        post(printDatagrams(bytes, qMax(options.datagramSize, PracticeOptions::datagramSizeLimits.lowest)), client);
}

void PracticeServer::post(QList<QByteArray> datagrams, const Client &client)
{
    if (options.reorder)
        datagrams = reordered(datagrams);
    const std::chrono::milliseconds late(
        lateness.bounded(static_cast<int>(leastLate.count()), static_cast<int>(mostLate.count()) + 1));
    for (const QByteArray &datagram : std::as_const(datagrams)) {
        if (isLost())
            emit happened(client.text() + u"reply of %1 bytes lost"_s.arg(datagram.size()));
        else if (options.late)
            sendLater(late + std::chrono::milliseconds(options.latencyMs), datagram, client);
        else if (options.latencyMs > 0)
            QTimer::singleShot(options.latencyMs, Qt::PreciseTimer, this,
                               [this, datagram, client] { send(datagram, client); });
        else
            send(datagram, client);
    }
}

void PracticeServer::sendLater(std::chrono::microseconds delay, const QByteArray &datagram, const Client &client)
{
    departures.add(delay, [this, datagram, client] { send(datagram, client); });
}

void PracticeServer::send(const QByteArray &datagram, const Client &client)
{
    if (socket.writeDatagram(datagram, client.address, client.port) != datagram.size())
        emit happened(client.text() + u"reply not sent: "_s + socket.errorString());
}

bool PracticeServer::isLost()
{
    return options.lossPercent > 0 && random.bounded(100) < options.lossPercent;
}

QString PracticeServer::Client::text() const
{
    return address.toString() + u':' + QString::number(port) + u": "_s;
}
