// SPDX-License-Identifier: MIT
#include "receivers.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr auto betweenPieces = 250ms;  // of the same reply, at most
constexpr auto latest = 15s;           // no answer comes after this
constexpr auto usuallyLatest = 6s;     // what takes longer tells nothing of the next answers
constexpr auto leastTolerance = 100ms; // by which an answer is slower than another
constexpr qint64 fullDatagram = 1000;  // bytes from which on a reply is likely to go on
constexpr qsizetype mostDelays = 8;
constexpr qsizetype mostReceivers = 100;

} // namespace

void Receivers::sent(int number, const QString &command, Time at)
{
    Receiver one{.number = number, .askedFor = AskedFor(command)};
    for (const Receiver &other : std::as_const(receivers)) {
        if (other.number == number)
            one = other;
    }
    one.copies.append(at);
    receivers.removeIf(
        [=](const Receiver &other) { return other.number == number || at - other.copies.last() > latest; });
    if (receivers.size() >= mostReceivers)
        receivers.removeFirst();
    receivers.append(one);
}

std::optional<int> Receivers::receiver(const QString &text, qint64 size, Time at)
{
    const auto [one, isCertain] = find(text, at);
    if (one == nullptr)
        return std::nullopt;
    if (one->datagrams == 0)
        one->firstText = text.isEmpty() ? 0 : qHash(text);
    if (one->isOpen() && !goesOn(*one, at)) {
        if (isCertain)
            measure(*one, at);
        ++one->replies;
    }
    ++one->datagrams;
    one->came = at;
    one->size = size;
    return one->number;
}

// What the server says comes first, then a reply that is under way, then the time. Of a command that has been answered
// only another copy can be answered.
Receivers::Found Receivers::find(const QString &text, Time at)
{
    if (receivers.isEmpty())
        return {};
    const ReplyWords words(text);
    const std::size_t hash = text.isEmpty() ? 0 : qHash(text);
    Receiver *underWay = nullptr;
    Receiver *answered = nullptr;
    Candidates named;
    Candidates unanswered;
    Candidates copies;
    for (Receiver &one : receivers) {
        if (at - one.copies.last() > latest && &one != &receivers.last())
            continue;
        const ReplyFit fit = words.fitTo(one.askedFor);
        const bool isRepeated = one.datagrams > 0 && hash != 0 && hash == one.firstText;
        if (one.isOpen() && (fit == ReplyFit::Names || isRepeated))
            named.append(&one);
        else if (!underWay && goesOn(one, at))
            underWay = &one;
        else if (fit == ReplyFit::Names)
            answered = &one;
        else if (fit != ReplyFit::Excludes && one.datagrams == 0)
            unanswered.append(&one);
        else if (fit != ReplyFit::Excludes && one.isOpen())
            copies.append(&one);
    }
    if (!named.isEmpty())
        return {pick(named, at), named.size() == 1};
    if (underWay)
        return {underWay};
    const auto isInTime = [&](const Receiver *one) { return comesInTime(*one, at); };
    const bool isForCopy = !std::ranges::any_of(unanswered, isInTime) && std::ranges::any_of(copies, isInTime);
    if (!unanswered.isEmpty() && !isForCopy) {
        const bool isOnly = unanswered.size() + copies.size() == 1;
        return {pick(text.isEmpty() ? likelySilent(unanswered, at) : unanswered, at), isOnly};
    }
    if (!copies.isEmpty())
        return {pick(copies, at)};
    return {answered ? answered : &receivers.last()};
}

// Servers answer in turn, some of them seconds later, and drop what comes too fast: it is the first command that would
// be answered in the time that this server takes. Else it has dropped the earlier ones.
Receivers::Receiver *Receivers::pick(const Candidates &candidates, Time at) const
{
    if (delays.isEmpty())
        return candidates.first();
    const auto first = std::ranges::find_if(candidates, [&](const Receiver *one) { return comesInTime(*one, at); });
    if (first != candidates.end())
        return *first;
    const Time least = *std::ranges::min_element(delays) * 3 / 4;
    const auto old = std::find_if(candidates.rbegin(), candidates.rend(),
                                  [&](const Receiver *one) { return at - one->copies.last() >= least; });
    return old != candidates.rend() ? *old : candidates.last();
}

/// Those to which servers say nothing, when there are any that can be answered by now.
Receivers::Candidates Receivers::likelySilent(const Candidates &candidates, Time at) const
{
    Candidates silent;
    std::ranges::copy_if(candidates, std::back_inserter(silent), [&](const Receiver *one) {
        return one->askedFor.prints == AskedFor::Prints::Never && (delays.isEmpty() || comesInTime(*one, at));
    });
    return silent.isEmpty() ? candidates : silent;
}

bool Receivers::comesInTime(const Receiver &one, Time at) const
{
    return std::ranges::any_of(one.copies, [&](Time sent) {
        return std::ranges::any_of(delays, [age = at - sent](Time delay) {
            return age >= delay * 2 / 3 && age <= delay + std::max<Time>(delay * 2 / 3, leastTolerance);
        });
    });
}

bool Receivers::goesOn(const Receiver &one, Time at)
{
    return one.datagrams > 0 && one.size >= fullDatagram && at - one.came <= betweenPieces;
}

// Nobody knows which of several copies has been answered.
void Receivers::measure(const Receiver &one, Time at)
{
    const Time delay = at - one.copies.last();
    if (one.copies.size() > 1 || delay > usuallyLatest)
        return;
    delays.append(delay);
    if (delays.size() > mostDelays)
        delays.removeFirst();
}
