// SPDX-License-Identifier: MIT
#pragma once

#include "link.h"

#include <QApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QtTest>

// What a person does at the console line, and what has come of it.

inline QString focused()
{
    const QWidget *widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
}

inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

/// Gives the control the focus as a person would: its tab is in front.
inline void focus(const Program &program, const QString &control)
{
    auto *widget = program.find<QWidget>(control);
    auto *tabs = program.find<QTabWidget>(QStringLiteral("SSTab"));
    for (int page = 0; page < tabs->count(); ++page) {
        if (tabs->widget(page)->isAncestorOf(widget))
            tabs->setCurrentIndex(page);
    }
    widget->setFocus();
    QCOMPARE(focused(), control);
}

inline void type(const Link &link, const QString &command)
{
    focus(link.program, QStringLiteral("comdirect"));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    QTest::keyClicks(QApplication::focusWidget(), command);
    QCOMPARE(link.program.text(QStringLiteral("comdirect")), command);
}

/// The commands that have come to the server, once all that was sent before has come.
inline QList<QByteArray> commandsSoFar(Link &link)
{
    link.server.answer("probe", {"here\n"});
    link.exchange.sendinfo(QStringLiteral("probe"), true);
    QList<QByteArray> commands = link.server.commands();
    commands.removeAll("probe");
    return commands;
}
