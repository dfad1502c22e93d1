// SPDX-License-Identifier: MIT
#include "rate_limit.h"

namespace {

constexpr std::chrono::milliseconds rconPause(500); // between two rcon packets of the whole server
constexpr std::chrono::seconds requestCost(1);      // what a request costs its address
constexpr std::chrono::seconds burstLength(10);

} // namespace

bool RateLimit::admits(Request::Kind kind, const QHostAddress &address, std::chrono::milliseconds now)
{
    using Rate = PracticeOptions::Rate;
    if (rate == Rate::HalfSecond && kind == Request::Kind::Rcon)
        return admitsRcon(now);
    if (rate == Rate::Burst && kind != Request::Kind::Unknown)
        return admitsFrom(address, now);
    return true;
}

bool RateLimit::admitsRcon(std::chrono::milliseconds now)
{
    if (lastRcon && now - *lastRcon < rconPause)
        return false;
    lastRcon = now;
    return true;
}

// Each request costs a second, and an address may be ten ahead of time. Who owes nothing is forgotten: otherwise old
// accounts would grow into credit, and the list with every stranger.
bool RateLimit::admitsFrom(const QHostAddress &address, std::chrono::milliseconds now)
{
    paidUntil.removeIf([now](const auto &entry) { return entry.value() <= now; });
    const std::chrono::milliseconds until = paidUntil.value(address, now) + requestCost;
    if (until - now > burstLength)
        return false;
    paidUntil.insert(address, until);
    return true;
}
