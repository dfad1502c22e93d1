// SPDX-License-Identifier: MIT
#include "list999.h"

#include "base/fault.h"
#include "base/wire_text.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

void List999::unsee()
{
    for (Rec999 &record : list)
        record.seen = false;
}

void List999::check999(const QString &name, const QString &ping, const QString &num)
{
    step = u"Top"_s;
    const QString pname = trimBlanks(name);
    const auto record = std::ranges::find(list, pname, &Rec999::pname);
    const bool known = record != list.end();
    if (ping == u"999") {
        if (known) {
            step = u"999"_s;
            addHit(*record);
        } else {
            step = u"Not Found"_s;
            list.append({1, pname, num, true});
        }
    } else if (known) {
        step = u"Got Found"_s;
        remove(record - list.begin());
    }
}

void List999::addHit(Rec999 &record)
{
    if (record.hits == std::numeric_limits<qint16>::max())
        throw Fault(Fault::Overflow);
    ++record.hits;
    record.seen = true;
}

void List999::remove(qsizetype index)
{
    if (list.size() == 1) {
        list = {Rec999()};
        return;
    }
    // Those behind move up without their slot numbers: each gets the number of the record whose place it takes.
    for (qsizetype to = index; to + 1 < list.size(); ++to) {
        list[to].hits = list[to + 1].hits;
        list[to].pname = list[to + 1].pname;
        list[to].seen = true;
    }
    list.removeLast();
}

void List999::sweep()
{
    // The last record is never looked at, and neither is one that has just moved into the place of another.
    for (qsizetype index = 0; index + 1 < list.size(); ++index) {
        if (!list.at(index).seen)
            list.removeAt(index);
    }
}
