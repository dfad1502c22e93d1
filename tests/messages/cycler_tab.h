// SPDX-License-Identifier: MIT
#pragma once

#include "at_request.h"
#include "messages_tab.h"

#include <QPlainTextEdit>
#include <QTimer>

inline Box startBox(const QString &set)
{
    return question(QStringLiteral("Start Message Cycler"),
                    QStringLiteral("Start message Cycle for set named:\r") + set);
}
inline Box noConnectionBox()
{
    return {QStringLiteral("Not Connected"), QStringLiteral("Please connect to server first"), BoxIcon::Information,
            BoxButtons::Ok};
}
inline Box pendingBox()
{
    return {QStringLiteral("Pending Save Sets"),
            QStringLiteral("Pending Save sets active\rPlease either Save or Discard changes\r"
                           "before starting message cycler"),
            BoxIcon::Exclamation, BoxButtons::Ok};
}

inline const QByteArray sayPrefix = "say ^3Molvark ^5(1.0)> ^7";

/// Types an interval and leaves its box.
inline void typeInterval(const MessagesTab &tab, const QString &text)
{
    auto *box = tab.program.find<QLineEdit>(QStringLiteral("txtinterval"));
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, text);
    tab.leave();
}

/// The "Messages" tab with the set "Ann" of these messages, and the empty set "Ben", connected to a practice server;
/// what connecting asked is forgotten.
struct CyclerTab final {
    explicit CyclerTab(const QList<QByteArray> &messages)
        : tab(keepsOutput + setsFile({{"Ann", messages}, {"Ben", {}}}), true)
    {
    }

    [[nodiscard]] Program &program() { return tab.program; }
    [[nodiscard]] bool isRunning() const
    {
        const bool runs = tab.program.find<QTimer>(QStringLiteral("tmrmessage"))->isActive();
        if (tab.program.find<QAbstractButton>(QStringLiteral("cmdmessstart"))->isEnabled() == runs ||
            tab.program.find<QAbstractButton>(QStringLiteral("cmdmessstop"))->isEnabled() != runs)
            failTest(QStringLiteral("the buttons do not say whether the cycler runs"));
        return runs;
    }
    /// Presses "Start" and agrees to the set that is shown.
    void start()
    {
        program().click(QStringLiteral("cmdmessstart"));
        if (program().prompts.takeBoxes() != QList<Box>{startBox(tab.set())} || !isRunning())
            failTest(QStringLiteral("the cycler does not start"));
    }
    void setInterval(const QString &text) const { typeInterval(tab, text); }
    /// Lets a minute pass, without waiting for it.
    void tick() const { QMetaObject::invokeMethod(tab.program.find<QTimer>(QStringLiteral("tmrmessage")), "timeout"); }
    /// What is said in the next minutes: the minute, counted from 1, and the message.
    QStringList saidIn(int minutes)
    {
        QStringList said;
        for (int minute = 1; minute <= minutes; ++minute) {
            server.forgetRequests();
            tick();
            for (const QByteArray &command : server.commands()) {
                if (command.startsWith(sayPrefix))
                    said.append(QString::number(minute) + QLatin1Char(' ') +
                                QString::fromLatin1(command.sliced(sayPrefix.size())));
                else if (!command.startsWith("dvarlist "))
                    failTest(QStringLiteral("the cycler sends ") + QString::fromLatin1(command));
            }
        }
        return said;
    }

    MessagesTab tab;
    PracticeServer &server = tab.server;
};
