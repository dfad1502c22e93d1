// SPDX-License-Identifier: MIT
#include "replay.h"

#include "datagrams.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto longestRecording = 24h * 366;
constexpr auto handful = 250ms;          // in which requests that follow each other are answered in turn
constexpr qsizetype fullDatagram = 1000; // bytes from which on a reply is likely to go on
const QByteArray statusKey = "getstatus";

struct Recorded {
    std::chrono::microseconds at{};
    bool isRequest = false;
    QByteArray datagram;
};

struct Asked {
    Request request;
    QByteArray key;
    std::chrono::microseconds at{};
    Replay::Answer answer;
};

std::optional<Recorded> readLine(const QByteArray &line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    const QString way = object.value("way"_L1).toString();
    const QJsonValue time = object.value("us"_L1);
    const std::chrono::microseconds at(time.toInteger(-1)); // no recording lasts longer, and sums are made of it
    const bool isInTime = at >= 0us && at <= longestRecording;
    const auto data = QByteArray::fromBase64Encoding(object.value("data"_L1).toString().toLatin1(),
                                                     QByteArray::AbortOnBase64DecodingErrors);
    if (!isInTime || (way != "out"_L1 && way != "in"_L1) || !object.value("data"_L1).isString() || !data)
        return std::nullopt;
    return Recorded{at, way == "out"_L1, *data};
}

bool setsAPassword(const QByteArrayList &words)
{
    const QByteArrayList setters{"set", "seta", "sets"};
    const qsizetype name = setters.contains(words.value(0).toLower()) ? 1 : 0;
    return words.value(name).split('"').first().toLower().endsWith("password");
}

// A command as it may be compared with a recorded one: a new password is one asterisk whatever its length, and so are
// the asterisks that stand for one.
QByteArray comparable(const QByteArray &command)
{
    const QByteArrayList words = command.simplified().split(' ');
    QByteArray key = command;
    if (setsAPassword(words)) {
        const qsizetype name = key.toLower().indexOf("password") + 8;
        key = key.first(name) + (name < key.size() ? " *" : "");
    }
    while (key.contains("**"))
        key.replace("**", "*");
    return key;
}

QByteArray keyFor(const Request &request, const QByteArray &datagram)
{
    if (request.kind == Request::Kind::Unknown)
        return datagram;
    return request.kind == Request::Kind::Status ? statusKey : "rcon " + comparable(request.command);
}

/// Where asterisks stand in a row a password stood that was as long. One alone can be the command's own.
bool isCovered(const QByteArray &command)
{
    return command.contains("**");
}

bool fitsUnder(const QByteArray &covered, const QByteArray &command)
{
    if (covered.size() != command.size())
        return false;
    for (qsizetype at = 0; at < covered.size(); ++at) {
        const bool isInRow = covered.mid(at, 2) == "**" || (at > 0 && covered.mid(at - 1, 2) == "**");
        if (!isInRow && covered.at(at) != command.at(at))
            return false;
    }
    return true;
}

bool isStatusResponse(const QByteArray &datagram)
{
    return datagram.startsWith(plainDatagram("statusResponse"));
}

/// Puts a recording's datagrams to the requests that they answer. They carry no number, so it goes by kind, size and
/// time.
class Listener final {
public:
    void hear(const Recorded &recorded)
    {
        if (recorded.isRequest) {
            const Request request = readRequest(recorded.datagram);
            const QByteArray key = keyFor(request, recorded.datagram);
            (key == statusKey ? publicly : byConsole).append({request, key, recorded.at, {}});
        } else if (Asked *one = askedFor(recorded)) {
            one->answer.append({recorded.at - one->at, recorded.datagram});
        }
    }
    [[nodiscard]] QList<Asked> all() const { return publicly + byConsole; }

private:
    // The first of a handful of requests whose reply is missing or goes on, else the last request.
    [[nodiscard]] Asked *askedFor(const Recorded &recorded)
    {
        QList<Asked> &asked = isStatusResponse(recorded.datagram) ? publicly : byConsole;
        Asked *last = nullptr;
        Asked *open = nullptr;
        for (qsizetype at = asked.size() - 1; at >= 0; --at) {
            Asked &one = asked[at];
            const std::chrono::microseconds time = recorded.at - one.at;
            if (time > handful && last != nullptr)
                break;
            last = last == nullptr ? &one : last;
            if (time <= handful && (one.answer.isEmpty() || goesOn(one.answer, time)))
                open = &one;
        }
        return open == nullptr ? last : open;
    }
    [[nodiscard]] static bool goesOn(const Replay::Answer &answer, std::chrono::microseconds time)
    {
        return answer.last().datagram.size() >= fullDatagram && time - answer.last().after <= handful;
    }

    QList<Asked> publicly; ///< the public query
    QList<Asked> byConsole;
};

} // namespace

Replay::Replay(const QByteArray &recording)
{
    Listener listener;
    const QByteArrayList lines = recording.split('\n');
    for (qsizetype number = 0; number < lines.size(); ++number) {
        if (lines.at(number).trimmed().isEmpty())
            continue;
        const std::optional<Recorded> recorded = readLine(lines.at(number));
        const bool breaksOff = number == lines.size() - 1; // the disk was full
        if (recorded)
            listener.hear(*recorded);
        else if (!breaksOff)
            complaint = complaint.isEmpty() ? u"line %1 is no datagram of a recording"_s.arg(number + 1) : complaint;
    }
    for (const Asked &one : listener.all()) {
        if (isCovered(one.request.command) && !answers.contains(one.key))
            covered.append({one.request.command, one.key});
        answers[one.key].append(one.answer);
    }
    if (complaint.isEmpty() && answers.isEmpty())
        complaint = u"no request is in it"_s;
}

bool Replay::knows(const QByteArray &request) const
{
    return answers.contains(keyOf(request));
}

Replay::Answer Replay::next(const QByteArray &request)
{
    const QByteArray key = keyOf(request);
    const QList<Answer> all = answers.value(key);
    const qsizetype turn = told[key]++;
    if (turn < all.size())
        return all.at(turn);
    const auto isSpoken = [](const Answer &answer) { return !answer.isEmpty(); };
    const auto found = std::find_if(all.rbegin(), all.rend(), isSpoken);
    return found == all.rend() ? Answer() : *found;
}

// Where the recorder found its password in a command it wrote asterisks; ours is found in the same place, or what stood
// there was no password but a word that is the same.
QByteArray Replay::keyOf(const QByteArray &request) const
{
    Request read = readRequest(request);
    const QByteArray plain = keyFor(read, request);
    if (answers.contains(plain) || read.password.isEmpty())
        return plain;
    const QByteArray asked = read.command;
    read.command.replace(read.password, "*");
    const QByteArray hidden = keyFor(read, request);
    const auto found = std::ranges::find_if(covered, [&](const Covered &one) { return fitsUnder(one.command, asked); });
    return answers.contains(hidden) || found == covered.end() ? hidden : found->key;
}
