// SPDX-License-Identifier: MIT
#include "timetable_file.h"

#include "timetable_times.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<std::pair<TimedList::When, QLatin1StringView>, 4> kinds{{{TimedList::ByHand, "by hand"_L1},
                                                                              {TimedList::AtTime, "at a time"_L1},
                                                                              {TimedList::Every, "every N minutes"_L1},
                                                                              {TimedList::WhenEmpty, "when empty"_L1}}};

QJsonObject written(const TimedList &list)
{
    QJsonArray days;
    for (int day = 0; day < 7; ++day) {
        if (list.days.at(static_cast<std::size_t>(day)))
            days.append(day + 1);
    }
    return {{u"name"_s, list.name},
            {u"commands"_s, QJsonArray::fromStringList(list.commands)},
            {u"active"_s, list.isActive},
            {u"when"_s, QString(kinds.at(list.when).second)},
            {u"time"_s, list.time.toString(u"HH:mm"_s)},
            {u"days"_s, days},
            {u"minutes"_s, list.minutes}};
}

std::optional<TimedList::When> readKind(const QString &text)
{
    for (const auto &[kind, word] : kinds) {
        if (text == word)
            return kind;
    }
    return {};
}

// A list that was damaged is not sent by itself.
TimedList read(const QJsonObject &object)
{
    TimedList list;
    list.name = object.value("name"_L1).toString();
    bool isWhole = true;
    for (const QJsonValue &command : object.value("commands"_L1).toArray()) {
        isWhole = isWhole && command.isString();
        list.commands.append(command.toString());
    }
    for (const QJsonValue &day : object.value("days"_L1).toArray()) {
        const int number = day.toInt();
        if (number >= 1 && number <= 7)
            list.days.at(static_cast<std::size_t>(number - 1)) = true;
        else
            isWhole = false;
    }
    const auto kind = readKind(object.value("when"_L1).toString());
    const auto time = readTime(object.value("time"_L1).toString());
    const int minutes = object.value("minutes"_L1).toInt();
    const bool isInRange = minutes >= 1 && minutes <= TimedList::mostMinutes;
    list.when = kind.value_or(list.when);
    list.time = time.value_or(list.time);
    list.minutes = isInRange ? minutes : list.minutes;
    list.isActive = object.value("active"_L1).toBool() && isWhole && kind && time && isInRange;
    return list;
}

} // namespace

QByteArray timetableText(const QList<TimedList> &lists)
{
    QJsonArray array;
    for (const TimedList &list : lists)
        array.append(written(list));
    return QJsonDocument(QJsonObject{{u"lists"_s, array}, {u"version"_s, 1}}).toJson();
}

std::optional<QList<TimedList>> readTimetable(const QByteArray &text)
{
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    const QJsonValue array = object.value("lists"_L1);
    if (object.value("version"_L1).toInt() != 1 || !array.isArray() || array.toArray().size() > mostTimedLists)
        return {};
    QList<TimedList> lists;
    for (const QJsonValue &value : array.toArray()) {
        if (!value.isObject())
            return {};
        lists.append(read(value.toObject()));
    }
    return lists;
}
