// SPDX-License-Identifier: MIT
#pragma once

#include "messages/message_sets.h"

#include <QRegularExpression>
#include <QtTest>

inline MessageSets loaded(const QByteArray &settings)
{
    MessageSets sets;
    sets.load(IniText(settings));
    return sets;
}

/// Four sets with a message each.
inline MessageSets four()
{
    return loaded("[set0]\r\nname=Ann\r\nmess0=a0\r\n[set1]\r\nname=Ben\r\nmess0=b0\r\n"
                  "[set2]\r\nname=Cem\r\nmess0=c0\r\n[set3]\r\nname=Dan\r\nmess0=d0\r\nmess1=d1\r\n");
}

/// One set "Ann" with these messages.
inline MessageSets withMessages(const QStringList &messages)
{
    MessageSets sets;
    sets.create(QStringLiteral("Ann"));
    for (const QString &message : messages)
        sets.add(message);
    return sets;
}

/// What a save writes, a line for each key.
inline QStringList written(const MessageSets &sets)
{
    QStringList lines;
    for (const IniEntry &entry : sets.entries())
        lines.append(entry.section + u'/' + entry.key + u'=' + entry.value);
    return lines;
}

/// The empty names of the sections from the given one to the last.
inline QStringList emptyNames(int from)
{
    QStringList lines;
    for (int number = from; number <= 9; ++number)
        lines.append(QStringLiteral("set%1/name=").arg(number));
    return lines;
}

/// Saves without a failure. Returns what was written.
inline QStringList saved(MessageSets &sets)
{
    const QStringList lines = written(sets);
    sets.beginSave();
    sets.endSave();
    return lines;
}

inline QStringList names(const MessageSets &sets)
{
    QStringList list;
    for (int slot = 0; slot < MessageSets::slotCount; ++slot)
        list.append(sets.name(slot));
    return list;
}

inline QStringList padded(QStringList list)
{
    list.resize(10);
    return list;
}
