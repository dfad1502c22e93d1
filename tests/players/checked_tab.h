// SPDX-License-Identifier: MIT
#pragma once

#include "menus.h"
#include "player_grid.h"
#include "players/player_table.h"
#include "rcon/exchange.h"

#include <QLabel>

/// The "Players" tab, and what the person does there.
struct Checked final : PlayersTab {
    explicit Checked(const PracticeOptions &options = desertedServer()) : PlayersTab({}, options)
    {
        auto *label = program.find<QLabel>(QStringLiteral("lblanswer"));
        QObject::connect(&program.exchange, &Exchange::waiting, label, [this] { noteAnswer(); });
        QObject::connect(&program.exchange, &Exchange::sending, label, [this] { noteAnswer(); });
    }

    /// Three players, of whom the second is in slot 5; they are listed.
    void settle()
    {
        put({somebody(3, QStringLiteral("Ann")), somebody(5, QStringLiteral("Ben")),
             somebody(7, QStringLiteral("Cid"))});
        list();
    }
    void list()
    {
        populate();
        forget();
    }
    void choose(int row, const QString &item)
    {
        const QModelIndex cell = view()->model()->index(row, PlayerColumn::Player);
        view()->scrollTo(cell);
        bool isOver = false;
        OpenMenu(*view(), view()->visualRect(cell).center()).choose(item);
        // The item acts from the event loop.
        QMetaObject::invokeMethod(
            view(), [&isOver] { isOver = true; }, Qt::QueuedConnection);
        QTRY_VERIFY(isOver);
        noteAnswer();
    }
    [[nodiscard]] QStringList names()
    {
        QStringList texts;
        for (const Player &player : server.game().players().all())
            texts.append(player.name);
        return texts;
    }
    void noteAnswer()
    {
        const auto *label = program.find<QLabel>(QStringLiteral("lblanswer"));
        const QString text = label->isVisible() ? label->text() : QString();
        if (!text.isEmpty() && (answers.isEmpty() || answers.constLast() != text))
            answers.append(text);
    }

    QStringList answers; ///< what the status bar has said
};
