// SPDX-License-Identifier: MIT
#include "base/numbers.h"
#include "base/wire_text.h"
#include "fuzz.h"
#include "messages/message_cycle.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

void fill(const QString &message, const QString &placeholder, const QString &value)
{
    QByteArray capitals = toAnsi(message);
    for (char &byte : capitals)
        byte = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    const qsizetype place = fromAnsi(capitals).indexOf(placeholder);
    require(hasPlaceholder(message, placeholder) == (place >= 0), "a placeholder is found in any letter case");
    const QString filled =
        place < 0 ? message : message.first(place) + value + message.sliced(place + placeholder.size());
    require(fillPlaceholder(message, placeholder, value) == filled, "the first placeholder makes room for the value");
}

void tellMode(const QString &mode, const QString &other)
{
    const QStringList words{u"Off"_s, u"On"_s, u"Reflective"_s, u"Shared"_s};
    const double number = isNumeric(mode) ? std::nearbyint(toNumber(mode)) : -1;
    const QString expected = number >= 0 && number <= 3 ? words.at(static_cast<qsizetype>(number)) : other;
    require(friendlyFireWord(mode, other) == expected, "a mode from 0 to 3 has a word");
}

void walk(const QStringList &positions)
{
    QStringList texts = positions;
    texts.removeAll(QString());
    MessageCycle cycle;
    for (qsizetype turn = 0; turn < 2 * positions.size() + 1; ++turn) {
        const std::optional<QString> message = cycle.next(positions);
        require(message.has_value() == !texts.isEmpty(), "a message is due as long as there is any");
        if (!message)
            return;
        require(*message == texts.at(turn % texts.size()), "messages come in their order, over and over");
        cycle.advance();
    }
    const std::optional<QString> last = cycle.next(positions.last(1)); // the set may have become shorter meanwhile
    require(last.has_value() != positions.last().isEmpty(), "a shorter set is walked through likewise");
}

void count(int interval)
{
    MessageCycle cycle;
    for (int minute = 0; minute < 3 * interval; ++minute)
        require(cycle.minutePassed(interval) == (minute % interval == 0), "at first, and then every interval");
}

} // namespace

// The first line is a message, the second the value to fill in; all lines are also a set's positions.
void fuzz(const QByteArray &input)
{
    constexpr int longestInterval = 10;
    const QStringList lines = fromAnsi(input).split(u'\n');
    for (const QString &placeholder : {u"%IP%"_s, u"%SN%"_s, u"%FF%"_s})
        fill(lines.first(), placeholder, lines.value(1));
    tellMode(lines.first(), lines.value(1));
    require(faultOf([&] { (void)minutesOf(lines.first()); }) == 0, "whatever is typed, a minute passes without a box");
    walk(lines);
    count(static_cast<int>(input.size() % longestInterval) + 1);
}
