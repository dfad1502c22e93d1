// SPDX-License-Identifier: MIT
#include "fuzz.h"
#include "timetable/emptiness.h"
#include "timetable/timetable_file.h"

#include <algorithm>

void fuzz(const QByteArray &input)
{
    const QList<TimedList> lists = readTimetable(input).value_or(QList<TimedList>());
    require(lists.size() <= mostTimedLists, "there are no more than the bound");
    require(readTimetable(timetableText(lists)) == lists, "what is written is read");
    const auto isInRange = [](const TimedList &list) {
        return list.time.isValid() && list.minutes >= 1 && list.minutes <= TimedList::mostMinutes;
    };
    require(std::ranges::all_of(lists, isInRange), "each list has a time and minutes");

    for (const QByteArray &answer : {input, QByteArray(4, '\xFF') + "statusResponse\n" + input}) {
        const std::optional<int> players = playersIn(answer);
        require(!players || (*players >= 0 && *players <= answer.count('\n')), "a player has a line");
    }
}
