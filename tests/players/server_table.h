// SPDX-License-Identifier: MIT
#pragma once

#include "practice/player.h"

#include <QList>
#include <QRegularExpression>
#include <QStringList>

// What the list must show of the practice server's players, worked out from the players themselves.

/// A run of blanks counts as one.
inline QString squeezed(QString text)
{
    static const QRegularExpression blanks(QStringLiteral(" +"));
    return text.replace(blanks, QStringLiteral(" "));
}

/// The words of the table between guid and qport, apart from the name they belong to.
struct TableFields {
    QString name; ///< as it came
    QString address;
    QString qport;
};

inline TableFields tableFields(const Player &player)
{
    static const QRegularExpression outerBlank(QStringLiteral("\\A | \\z"));
    // The game ends every name with the colour white.
    QString name = squeezed(player.name + QStringLiteral("^7")).remove(outerBlank);
    const QString qport = QString::number(player.qport);
    if (player.address.size() < 22 || qport.size() < 5)
        return {name, player.address, qport};

    // Two full columns touch. Read from the end of the line, every field before them is taken for the one behind it.
    const qsizetype lastWord = name.lastIndexOf(u' ') + 1;
    return {name.first(qMax<qsizetype>(lastWord - 1, 0)), QString::number(player.lastmsg), player.address + qport};
}

inline QString pingShown(const Player &player)
{
    switch (player.state) {
    case Player::State::Connecting:
        return QStringLiteral("CNCT");
    case Player::State::Leaving:
        return QStringLiteral("ZMBI");
    case Player::State::Playing:
        break;
    }
    return QString::number(player.ping);
}

/// The rows of the list, with the colour codes taken out of the names or not.
inline QList<QStringList> tableRows(const QList<Player> &players, bool withoutColours)
{
    static const QRegularExpression colour(QStringLiteral("\\^[0-9]"));
    QList<QStringList> rows;
    for (const Player &player : players) {
        TableFields fields = tableFields(player);
        if (withoutColours)
            fields.name.remove(colour);
        rows.append({{},
                     QString::number(player.slot),
                     player.guid,
                     fields.name,
                     pingShown(player),
                     QString::number(player.score),
                     fields.address,
                     fields.qport,
                     QString::number(player.rate),
                     {}});
    }
    return rows;
}
