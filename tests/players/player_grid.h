// SPDX-License-Identifier: MIT
#pragma once

#include "at_request.h"
#include "connected_program.h"
#include "exchange_boxes.h"
#include "practice/player.h"
#include "window_test.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QTableView>

/// A server on which nobody is.
inline PracticeOptions desertedServer()
{
    PracticeOptions options;
    options.players = 0;
    return options;
}

/// Somebody whose cells are easily told from those of others.
inline Player somebody(int slot, const QString &name, int ping = 50, int score = 0)
{
    Player player;
    player.slot = slot;
    player.score = score;
    player.ping = ping;
    player.guid = QString::number(100'000 + slot);
    player.name = name;
    player.address = QStringLiteral("10.0.0.%1:28960").arg(slot);
    player.qport = 1000 + slot;
    return player;
}

/// The ten cells that show `player`, under this name.
inline QStringList cells(const Player &player, const QString &shownName)
{
    return {{},
            QString::number(player.slot),
            player.guid,
            shownName,
            QString::number(player.ping),
            QString::number(player.score),
            player.address,
            QString::number(player.qport),
            QString::number(player.rate),
            {}};
}

/// The same under the player's own name.
inline QStringList cells(const Player &player)
{
    return cells(player, player.name);
}

/// Ten cells of which only the first ones have text.
inline QStringList cellsOf(QStringList texts)
{
    texts.resize(10);
    return texts;
}

inline const QByteArray statusHeading = "map: mp_carentan\n"
                                        "num score ping guid   name            lastmsg address     qport rate\n"
                                        "--- ----- ---- ------ --------------- ------- ----------- ----- -----\n";

/// A line of the status table about somebody in slot 3, whose name stands as it is.
inline QByteArray statusLine(const QByteArray &name)
{
    return "  3     7   48 123456 " + name + "            50 10.0.0.1:28960        1234 25000\n";
}

/// The ten cells that show such a line.
inline QStringList statusCells(const QString &shownName)
{
    return {QString(),
            QStringLiteral("3"),
            QStringLiteral("123456"),
            shownName,
            QStringLiteral("48"),
            QStringLiteral("7"),
            QStringLiteral("10.0.0.1:28960"),
            QStringLiteral("1234"),
            QStringLiteral("25000"),
            QString()};
}

inline Box exclamation(const QString &title, const QString &text)
{
    return {title, text, BoxIcon::Exclamation, BoxButtons::Ok};
}

inline Box information(const QString &title, const QString &text)
{
    return {title, text, BoxIcon::Information, BoxButtons::Ok};
}

inline Box noPlayersBox()
{
    return information(QStringLiteral("No players"), QStringLiteral("No players on server"));
}

inline Box slowBox()
{
    return exclamation(QStringLiteral("Slow Server Response"),
                       QStringLiteral("The server is not responding quickly enough\rTry populate again"));
}

/// The running program with the "Players" tab open, connected to a practice server on which nobody is yet; what
/// connecting asked is forgotten.
struct PlayersTab : ConnectedProgram {
    explicit PlayersTab(const QByteArray &preferences = {}, const PracticeOptions &options = desertedServer())
        : ConnectedProgram({.practice = options, .settings = keepsOutput + preferences, .tab = 4})
    {
        server.answerAsUsual("status");
        server.answerAsUsual("getstatus");
    }

    void put(const QList<Player> &players)
    {
        for (const Player &player : players)
            server.game().players().put(player);
    }
    void populate() const { program.click(QStringLiteral("cmdplypop")); }
    [[nodiscard]] QTimer *timer() const { return program.find<QTimer>(QStringLiteral("tmrplayer")); }
    /// Lets the refresh timer run out, without waiting for it.
    void tick() const { QMetaObject::invokeMethod(timer(), "timeout"); }
    void tickBox(const QString &box, bool on = true) const { program.find<QAbstractButton>(box)->setChecked(on); }
    void sortOn(int item) const { program.find<QComboBox>(QStringLiteral("complayersort"))->setCurrentIndex(item); }

    [[nodiscard]] QTableView *view() const { return program.find<QTableView>(QStringLiteral("msfplayers")); }
    /// All cells of the grid, row by row.
    [[nodiscard]] QList<QStringList> grid() const
    {
        QList<QStringList> rows;
        const QAbstractItemModel *model = view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < model->columnCount(); ++column)
                texts.append(model->index(row, column).data().toString());
            rows.append(texts);
        }
        return rows;
    }
    /// One column of the grid.
    [[nodiscard]] QStringList column(int number) const
    {
        QStringList texts;
        for (const QStringList &row : grid())
            texts.append(row.at(number));
        return texts;
    }
    /// Clicks the row with the mouse.
    void select(int row) const
    {
        const QModelIndex cell = view()->model()->index(row, 1);
        view()->scrollTo(cell);
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, view()->visualRect(cell).center());
    }
    /// The slot numbers of the rows that are shown selected.
    [[nodiscard]] QStringList selected() const
    {
        QStringList numbers;
        for (const QModelIndex &row : view()->selectionModel()->selectedRows(1))
            numbers.append(row.data().toString());
        return numbers;
    }
};
