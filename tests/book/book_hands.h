// SPDX-License-Identifier: MIT
#pragma once

#include "menus.h"
#include "other_windows.h"
#include "tests/players/player_grid.h"

#include <QLabel>
#include <QListWidget>
#include <QTableView>
#include <QtTest>

inline const QByteArray keepsBook = "[book]\r\nkeep=true\r\n";

/// The program with the list of players and the window of the player book, as a person uses them. Its clock is right,
/// since the book throws old things away when it is opened.
struct BookHands : PlayersTab {
    explicit BookHands(const QByteArray &settings = keepsBook, const PracticeOptions &options = desertedServer())
        : PlayersTab(settings, options)
    {
        // The window tells minutes, and none of them is to end while a test looks.
        const QDateTime now = QDateTime::currentDateTime();
        program.clock.set(QDateTime(now.date(), QTime(now.time().hour(), now.time().minute())));
    }

    void open()
    {
        program.trigger(QStringLiteral("mbook"));
        window = otherWindow(QStringLiteral("frmbook"));
        if (!window)
            failTest(QStringLiteral("no player book"));
    }
    template <typename Widget>
    [[nodiscard]] Widget *find(const char *name) const
    {
        auto *found = window->findChild<Widget *>(QLatin1StringView(name));
        if (!found)
            failTest(QStringLiteral("no control named ") + QLatin1StringView(name));
        return found;
    }
    [[nodiscard]] QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    void type(const char *line, const QString &text) const { find<QLineEdit>(line)->setText(text); }
    [[nodiscard]] QString label(const char *name) const { return find<QLabel>(name)->text(); }
    [[nodiscard]] QString state() const { return label("lblbookstate"); }

    [[nodiscard]] QList<QStringList> table(const char *name) const
    {
        const QAbstractItemModel *model = find<QTableView>(name)->model();
        QList<QStringList> rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < model->columnCount(); ++column)
                texts.append(model->index(row, column).data().toString());
            rows.append(texts);
        }
        return rows;
    }
    [[nodiscard]] QStringList tableColumn(const char *name, int column) const
    {
        QStringList texts;
        for (const QStringList &row : table(name))
            texts.append(row.at(column));
        return texts;
    }
    /// The names in the list of players.
    [[nodiscard]] QStringList players() const { return tableColumn("tblbook", 0); }
    [[nodiscard]] QStringList list(const char *name) const
    {
        const auto *box = find<QListWidget>(name);
        QStringList texts;
        for (int row = 0; row < box->count(); ++row)
            texts.append(box->item(row)->text());
        return texts;
    }
    /// Clicks the row of the table in which this text stands.
    void choose(const char *name, const QString &text) const
    {
        auto *view = find<QTableView>(name);
        for (int row = 0; row < view->model()->rowCount(); ++row) {
            for (int column = 0; column < view->model()->columnCount(); ++column) {
                const QModelIndex cell = view->model()->index(row, column);
                if (cell.data().toString() != text)
                    continue;
                view->scrollTo(cell);
                QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
                return;
            }
        }
        failTest(QStringLiteral("no row with ") + text);
    }
    /// Chooses a player, and waits until he is shown.
    void choosePlayer(const QString &name)
    {
        if (!QTest::qWaitFor([&] { return players().contains(name); }))
            failTest(name + QStringLiteral(" is not in the book"));
        choose("tblbook", name);
        const QString guid = find<QTableView>("tblbook")->currentIndex().siblingAtColumn(1).data().toString();
        if (!QTest::qWaitFor([&] { return label("lblbookplayer").contains(guid); }))
            failTest(name + QStringLiteral(" is not shown"));
    }
    void showPage(int page) const { find<QTabWidget>("tabbook")->setCurrentIndex(page); }
    void pass(int seconds) { program.clock.set(program.clock.now().addSecs(seconds)); }

    /// What a label of the status bar says; empty when it is hidden.
    [[nodiscard]] QString status(const char *name) const
    {
        const auto *found = program.find<QLabel>(QLatin1StringView(name));
        return found->isVisible() ? found->text() : QString();
    }
    [[nodiscard]] QString address() const { return QStringLiteral("127.0.0.1:%1").arg(server.port()); }
    /// What is said of the mark at the edge of the row, if there is one.
    [[nodiscard]] QString mark(int row) const
    {
        return view()->model()->index(row, 0).data(Qt::AccessibleDescriptionRole).toString();
    }
    /// Takes the only box there has been.
    [[nodiscard]] Box box()
    {
        const QList<Box> boxes = program.prompts.takeBoxes();
        return boxes.size() == 1 ? boxes.first() : Box();
    }

    /// Waits for the book to bring a box.
    [[nodiscard]] Box nextBox()
    {
        QList<Box> boxes;
        const bool hasCome = QTest::qWaitFor([&] {
            boxes += program.prompts.takeBoxes();
            return !boxes.isEmpty();
        });
        return hasCome ? boxes.first() : Box();
    }

    QWidget *window = nullptr;
};
