// SPDX-License-Identifier: MIT
#pragma once

#include "connected_program.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QtTest>

// What a person does at the console line with its list of completions, and what he sees.

/// The list when it is open, else null.
inline QListView *openList(const Program &program)
{
    auto *list = program.window.findChild<QListView *>(QStringLiteral("lstcomplete"));
    return list && list->isVisible() ? list : nullptr;
}

inline QStringList offeredWords(const Program &program)
{
    QStringList words;
    if (const QListView *list = openList(program)) {
        for (int row = 0; row < list->model()->rowCount(); ++row)
            words.append(list->model()->index(row, 0).data().toString());
    }
    return words;
}

/// The lines below the list.
inline QString describedWord(const Program &program)
{
    return program.find<QLabel>(QStringLiteral("lblcomplete"))->text();
}

inline QString consoleLine(const Program &program)
{
    return program.text(QStringLiteral("comdirect"));
}

inline void pressInLine(const Program &program, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(program.find<QComboBox>(QStringLiteral("comdirect")), key, modifiers);
}

/// Types into the emptied console line.
inline void typeWord(const Program &program, const QString &text)
{
    auto *line = program.find<QComboBox>(QStringLiteral("comdirect"));
    line->setFocus();
    QCOMPARE(QApplication::focusWidget(), line);
    pressInLine(program, Qt::Key_A, Qt::ControlModifier);
    pressInLine(program, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

/// Sends it as it is, by Return.
inline void sendLine(const Program &program, const QString &text)
{
    typeWord(program, text);
    pressInLine(program, Qt::Key_Return);
}
