// SPDX-License-Identifier: MIT
#include "base/wire_text.h"
#include "fuzz.h"
#include "players/list999.h"

#include <QSet>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

void examine(const List999 &list)
{
    require(!list.records().isEmpty(), "the list is never empty");
    QSet<QString> names;
    for (const Rec999 &record : list.records()) {
        require(!names.contains(record.pname), "nobody is listed twice");
        require(record.pname == trimBlanks(record.pname), "a name has no blanks at its ends");
        require(record.hits >= 0, "nobody was seen less than never");
        names.insert(record.pname);
    }
}

} // namespace

// Every line is a player: name, ping and slot number, parted by tabs. An empty line ends a populate.
void fuzz(const QByteArray &input)
{
    List999 list;
    list.unsee();
    for (const QString &line : fromAnsi(input).split(u'\n')) {
        if (line.isEmpty()) {
            list.sweep();
            examine(list);
            list.unsee();
            continue;
        }
        const QStringList fields = line.split(u'\t');
        const QString ping = fields.value(1);
        list.check999(fields.at(0), ping, fields.value(2));
        const auto record = std::ranges::find(list.records(), trimBlanks(fields.at(0)), &Rec999::pname);
        if (ping == u"999")
            require(record != list.records().end() && record->seen && record->hits > 0, "a hanging player is listed");
        examine(list);
    }
}
