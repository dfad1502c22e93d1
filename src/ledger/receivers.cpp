// SPDX-License-Identifier: MIT
#include "receivers.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr auto handful = 250ms;       // commands that are further apart are not mixed up
constexpr qint64 fullDatagram = 1000; // bytes from which on a reply is likely to go on

} // namespace

void Receivers::sent(int number, Time at)
{
    Receiver one{.number = number, .sent = at};
    for (const Receiver &other : std::as_const(receivers)) {
        if (other.number == number)
            one = other;
    }
    one.sent = at;
    receivers.removeIf([=](const Receiver &other) { return other.number == number || at - other.sent > handful; });
    receivers.append(one);
}

std::optional<int> Receivers::receiver(qint64 size, Time at)
{
    Receiver *one = find(at);
    if (one == nullptr)
        return std::nullopt;
    if (one->datagrams == 0)
        fastest = std::min(fastest.value_or(Time::max()), at - one->sent);
    ++one->datagrams;
    one->came = at;
    one->size = size;
    return one->number;
}

// A reply that is under way goes on first. Else it is the last command that the server can have answered by now: those
// before it are as likely to have been dropped.
Receivers::Receiver *Receivers::find(Time at)
{
    if (receivers.isEmpty())
        return nullptr;
    const auto underWay = std::ranges::find_if(receivers, [at](const Receiver &one) { return goesOn(one, at); });
    if (underWay != receivers.end())
        return &*underWay;
    const Time least = fastest.value_or(Time::zero()) * 3 / 4;
    for (auto one = receivers.rbegin(); one != receivers.rend(); ++one) {
        const Time age = at - one->sent;
        if (one->datagrams == 0 && age >= least && (age <= handful || one == receivers.rbegin()))
            return &*one;
    }
    return &receivers.last();
}

bool Receivers::goesOn(const Receiver &one, Time at)
{
    return one.datagrams > 0 && one.size >= fullDatagram && at - one.came <= handful;
}
