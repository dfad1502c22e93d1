// SPDX-License-Identifier: MIT
#pragma once

#include "fail_test.h"
#include "output/rcon_pane.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QTextCursor>
#include <QWheelEvent>
#include <QtTest>

/// `count` lines that fit into the width of a pane.
inline QString lines(int count)
{
    return QStringLiteral("  0     0    0      0 democlient\r\n").repeated(count);
}

/// A pane on the screen, a few lines high.
class Pane final {
public:
    Pane()
    {
        pane.resize(500, 160);
        pane.show();
        if (!QTest::qWaitForWindowExposed(&pane))
            failTest(QStringLiteral("the pane does not show"));
    }

    /// Appends and lets the pane lay its lines out.
    void append(const QString &text)
    {
        pane.append(text);
        QCoreApplication::processEvents();
    }
    /// The last line is to be seen.
    [[nodiscard]] bool isAtEnd() const
    {
        QTextCursor end(pane.document());
        end.movePosition(QTextCursor::End);
        return bar()->value() == bar()->maximum() && pane.viewport()->rect().contains(pane.cursorRect(end));
    }
    [[nodiscard]] QScrollBar *bar() const { return pane.verticalScrollBar(); }

    RconPane pane;
};

/// What a person does to look at older lines.
inline void scrollUp(RconPane &pane, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const QPoint middle = pane.viewport()->rect().center();
    QWheelEvent turn(middle, pane.viewport()->mapToGlobal(middle), {}, {0, 240}, Qt::NoButton, modifiers,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(pane.viewport(), &turn);
}
