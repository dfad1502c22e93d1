// SPDX-License-Identifier: MIT
#pragma once

#include "exchange_boxes.h"
#include "game_replies.h"
#include "hostile_server.h"
#include "practice/player.h"
#include "program.h"
#include "window_test.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>

/// The running program in the hands of a hostile server.
struct Victim final {
    explicit Victim(const PracticeOptions &options = desertedGame(), const QByteArray &preferences = {})
        : server(options), program(keepsOutput + preferences)
    {
        program.start();
        program.setText(QStringLiteral("comserver"), QStringLiteral("127.0.0.1"));
        program.setText(QStringLiteral("comport"), QString::number(server.port()));
        program.setText(QStringLiteral("txtPWD"), QStringLiteral("practice"));
    }

    void connect() const { program.click(QStringLiteral("cmdconnect")); }
    [[nodiscard]] bool isConnected() const { return program.isConnected(); }

    void openHob() const { program.click(QStringLiteral("cmdhob")); }
    /// The button of that name in whichever window.
    [[nodiscard]] static QAbstractButton *button(const QString &name)
    {
        for (QWidget *widget : QApplication::allWidgets()) {
            if (auto *found = qobject_cast<QAbstractButton *>(widget); found && found->objectName() == name)
                return found;
        }
        failTest(QStringLiteral("no button named ") + name);
    }

    /// Asks the server for everything that the program shows of it. The list of players is asked for in both ways.
    void populateAll() const
    {
        for (const char *name : {"cmdservpop", "cmdCodOther_1", "cmdpopwep", "cmdpopmaps", "cmdhobpop"})
            button(QString::fromLatin1(name))->click();
        for (const bool query : {true, false}) {
            program.find<QAbstractButton>(QStringLiteral("chkplyq"))->setChecked(query);
            program.click(QStringLiteral("cmdplypop"));
        }
    }

    void put(int slot, const QString &name)
    {
        Player player;
        player.slot = slot;
        player.guid = QString::number(100'000 + slot);
        player.name = name;
        player.address = QStringLiteral("10.0.0.%1:28960").arg(slot);
        player.qport = 1000 + slot;
        server.game.players().put(player);
    }

    [[nodiscard]] QAbstractItemModel *grid() const
    {
        return program.find<QAbstractItemView>(QStringLiteral("msfplayers"))->model();
    }
    /// The names in the list of players.
    [[nodiscard]] QStringList names() const
    {
        QStringList names;
        for (int row = 0; row < grid()->rowCount(); ++row)
            names.append(grid()->index(row, 3).data().toString());
        return names;
    }

    HostileServer server;
    Program program;
};

/// What the fields, lists and tables of all windows hold.
inline QStringList fieldTexts()
{
    QStringList texts;
    for (const QWidget *widget : QApplication::allWidgets()) {
        if (const auto *line = qobject_cast<const QLineEdit *>(widget))
            texts.append(line->text());
        const QAbstractItemModel *model = nullptr;
        if (const auto *box = qobject_cast<const QComboBox *>(widget))
            model = box->model();
        if (const auto *view = qobject_cast<const QAbstractItemView *>(widget))
            model = view->model();
        for (int row = 0; model && row < model->rowCount(); ++row) {
            for (int column = 0; column < model->columnCount(); ++column)
                texts.append(model->index(row, column).data().toString());
        }
    }
    return texts;
}

/// All texts that any window of the program shows.
inline QStringList allTexts()
{
    QStringList texts = fieldTexts();
    for (const QWidget *widget : QApplication::allWidgets()) {
        texts.append({widget->windowTitle(), widget->toolTip(), widget->statusTip(), widget->whatsThis()});
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            texts.append(label->text());
        if (const auto *edit = qobject_cast<const QPlainTextEdit *>(widget))
            texts.append(edit->toPlainText());
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            texts.append(button->text());
    }
    return texts;
}
