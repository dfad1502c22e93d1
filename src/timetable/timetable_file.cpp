// SPDX-License-Identifier: MIT
#include "timetable_file.h"

#include "base/system_error.h"
#include "settings/whole_file.h"
#include "timetable_times.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = 4LL * 1024 * 1024; // bytes

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

/// Of half a character, which no text can be written with, there is none.
QString textIn(const QJsonValue &value, bool &isWhole)
{
    const QString text = value.toString();
    isWhole = isWhole && value.isString() && text.isValidUtf16();
    return text.isValidUtf16() ? text : QString();
}

// A list that was damaged is not sent by itself.
TimedList read(const QJsonObject &object)
{
    TimedList list;
    const QJsonValue commands = object.value("commands"_L1);
    const QJsonValue days = object.value("days"_L1);
    bool isWhole = commands.isArray() && days.isArray();
    list.name = textIn(object.value("name"_L1), isWhole);
    for (const auto &command : commands.toArray())
        list.commands.append(textIn(command, isWhole));
    for (const auto &day : days.toArray()) {
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
    for (const auto &value : array.toArray()) {
        if (!value.isObject())
            return {};
        lists.append(read(value.toObject()));
    }
    return lists;
}

TimetableFile::TimetableFile(QString path_) : file(std::move(path_)) {}

QList<TimedList> TimetableFile::read()
{
    trouble.clear();
    const std::optional<QByteArray> text = contents();
    if (!text)
        return {};
    const std::optional<QList<TimedList>> lists = readTimetable(*text);
    if (lists)
        lastText = *text;
    else if (!text->isEmpty())
        putAside();
    return lists.value_or(QList<TimedList>());
}

std::optional<QList<TimedList>> TimetableFile::write(const QList<TimedList> &lists)
{
    trouble.clear();
    const std::optional<QByteArray> there = contents();
    if (!there)
        return {};
    if (*there != lastText && !there->isEmpty()) {
        if (std::optional<QList<TimedList>> theirs = readTimetable(*there)) {
            lastText = *there;
            trouble = u"Another program has changed the timetable; these are its lists"_s;
            return theirs;
        }
        if (!putAside())
            return {};
    }
    const QByteArray text = timetableText(lists);
    const std::optional<Fault> failed =
        text.size() > largestFile ? systemFault(std::errc::file_too_large) : replaceWholeFile(file, text);
    if (failed)
        trouble = u"The timetable could not be saved: "_s + failed->description();
    else
        lastText = text;
    return {};
}

std::optional<QByteArray> TimetableFile::contents()
{
    QByteArray text;
    const std::optional<Fault> failed = readWholeFile(file, largestFile, text);
    if (!failed)
        return text;
    trouble = u"The timetable %1 could not be read: %2"_s.arg(QFileInfo(file).fileName(), failed->description());
    return {};
}

// Whatever it is, somebody may want it back.
bool TimetableFile::putAside()
{
    const QString aside = putFileAside(file);
    trouble = !aside.isEmpty()
                  ? u"The timetable was broken and is kept as %1"_s.arg(aside)
                  : u"The timetable %1 is broken and could not be put aside"_s.arg(QFileInfo(file).fileName());
    return !aside.isEmpty();
}
