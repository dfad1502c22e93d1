// SPDX-License-Identifier: MIT
#include "book_export.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

using namespace Qt::StringLiterals;

namespace {

template <typename Each>
QJsonArray array(const QList<Each> &all, QJsonObject (*object)(const Each &))
{
    QJsonArray list;
    for (const Each &each : all)
        list.append(object(each));
    return list;
}

QJsonObject aliasObject(const BookAlias &alias)
{
    return {{u"text"_s, alias.text},
            {u"firstSeen"_s, bookTime(alias.firstSeen)},
            {u"lastSeen"_s, bookTime(alias.lastSeen)},
            {u"times"_s, alias.times}};
}

QJsonObject noteObject(const BookNote &note)
{
    return {{u"time"_s, bookTime(note.time)}, {u"text"_s, note.text}};
}

QJsonObject actionObject(const BookAction &action)
{
    QJsonObject object{{u"time"_s, bookTime(action.time)},
                       {u"action"_s, actionWord(action.kind)},
                       {u"server"_s, action.server},
                       {u"slot"_s, action.num},
                       {u"guid"_s, action.guid},
                       {u"name"_s, action.name},
                       {u"address"_s, action.address},
                       {u"maybe"_s, action.isMaybe},
                       {u"automatic"_s, action.isAutomatic},
                       {u"imported"_s, action.isImported},
                       {u"verdict"_s, action.verdict},
                       {u"reason"_s, action.reason}};
    if (action.kind != BookAction::Kick)
        object.insert(u"state"_s, banStateWord(action.state));
    return object;
}

QJsonObject sightingObject(const BookSighting &sighting)
{
    QJsonObject object{
        {u"time"_s, bookTime(sighting.time)}, {u"server"_s, sighting.server}, {u"score"_s, sighting.score}};
    if (sighting.ping >= 0)
        object.insert(u"ping"_s, sighting.ping);
    return object;
}

} // namespace

QByteArray pageJson(const BookPage &page)
{
    QJsonObject object{
        {u"name"_s, page.player.name},
        {u"guid"_s, page.player.guid},
        {u"firstSeen"_s, bookTime(page.player.firstSeen)},
        {u"lastSeen"_s, bookTime(page.player.lastSeen)},
        {u"times"_s, page.player.visits},
        {u"flagged"_s, page.player.isFlagged},
        {u"names"_s, array(page.names, aliasObject)},
        {u"addresses"_s, array(page.addresses, aliasObject)},
        {u"notes"_s, array(page.notes, noteObject)},
        {u"actions"_s, array(page.actions, actionObject)},
        {u"sightings"_s, array(page.sightings, sightingObject)},
    };
    if (!page.nobodyName.isEmpty() || !page.nobodyAddress.isEmpty()) {
        object.insert(u"keptByName"_s, page.nobodyName);
        object.insert(u"keptByAddress"_s, page.nobodyAddress);
    }
    return QJsonDocument(object).toJson();
}

QString bookTime(qint64 time)
{
    return QDateTime::fromSecsSinceEpoch(time, Qt::UTC).toString(Qt::ISODate);
}

QString actionWord(BookAction::Kind kind)
{
    constexpr std::array words{"kick"_L1, "ban"_L1, "temporary ban"_L1};
    return words.at(static_cast<std::size_t>(kind));
}

QString banStateWord(BookBan::State state)
{
    constexpr std::array words{"in force"_L1, "temporary"_L1, "refused"_L1, "lifted"_L1, "imported"_L1};
    return words.at(static_cast<std::size_t>(state));
}
