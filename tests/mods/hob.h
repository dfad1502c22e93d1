// SPDX-License-Identifier: MIT
#pragma once

#include "activation.h"
#include "at_request.h"
#include "base/controls.h"
#include "connected_program.h"
#include "exchange_boxes.h"
#include "window_test.h"

#include <QScrollBar>

inline PracticeOptions hobServer()
{
    PracticeOptions options;
    options.mod = PracticeOptions::hobMod;
    options.mapLoadMs = 0;
    return options;
}

/// The open windows of the mod.
inline QWidgetList hobWindows()
{
    QWidgetList windows;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QStringLiteral("frmhob") && window->isVisible())
            windows.append(window);
    }
    return windows;
}

inline Box notConnectedPageBox()
{
    return {QStringLiteral("Not Connected"), QStringLiteral("You need to connect to a server first"),
            BoxIcon::Exclamation, BoxButtons::Ok};
}
inline Box sendBox()
{
    return {QStringLiteral("Send to Server?"),
            QStringLiteral("Only changed values will be sent.\rSend settings to server?"), BoxIcon::Information,
            BoxButtons::OkCancel};
}

/// The switches in the order in which they are read.
inline QStringList switches()
{
    return QStringLiteral("chkobi chkshot chkdrop chkshell chkdw chkdf chkdb chkspawn chkannouncespawn")
        .split(QLatin1Char(' '));
}

/// The running program with the mod's window open; connected to a practice server with the mod, if wanted, and what
/// connecting asked is forgotten.
struct Hob final : ConnectedProgram {
    explicit Hob(bool connected = true) : ConnectedProgram({.practice = hobServer(), .connects = connected})
    {
        program.click(QStringLiteral("cmdhob"));
        if (!becomesActive(window()))
            failTest(QStringLiteral("the window does not become active"));
        forget();
    }

    [[nodiscard]] static QWidget *window()
    {
        if (hobWindows().size() != 1)
            failTest(QStringLiteral("the window is not open, or twice"));
        return hobWindows().constFirst();
    }
    template <typename Object>
    [[nodiscard]] static Object *find(const QString &name)
    {
        auto *found = window()->findChild<Object *>(name);
        if (!found)
            failTest(QStringLiteral("no object named ") + name);
        return found;
    }
    void click(const QString &button) const { find<QAbstractButton>(button)->click(); }
    [[nodiscard]] static TextBox *text(const QString &box) { return find<TextBox>(box); }
    [[nodiscard]] static CheckBox *box(const QString &name) { return find<CheckBox>(name); }
    [[nodiscard]] static QScrollBar *bar(const QString &name) { return find<QScrollBar>(name); }
    [[nodiscard]] static QString hint() { return find<QLineEdit>(QStringLiteral("txtmess"))->text(); }
    /// Types over what is in the box, without leaving it.
    static void type(const QString &box, const QString &typed)
    {
        text(box)->setFocus();
        text(box)->selectAll();
        QTest::keyClicks(text(box), typed);
    }
    /// Goes to another control.
    static void leave() { find<QWidget>(QStringLiteral("cmdexit"))->setFocus(); }
};
