// SPDX-License-Identifier: MIT
#pragma once

#include "practice/practice_server.h"

#include <QTimer>

/// Runs `action` once, when the server gets its first request with this command, and before it answers.
template <typename Action>
void atRequest(PracticeServer &server, const QByteArray &command, const Action &action)
{
    QObject::connect(&server, &PracticeServer::requested, &server, [&server, command, action, done = false]() mutable {
        if (done || server.commands().constLast() != command)
            return;
        done = true;
        action();
    });
}

/// Runs `action` once, from the event loop and perhaps inside a wait, as soon as `condition` holds.
template <typename Condition, typename Action>
void asSoonAs(QObject *context, const Condition &condition, const Action &action)
{
    auto *timer = new QTimer(context);
    QObject::connect(timer, &QTimer::timeout, context, [=] {
        if (!condition())
            return;
        timer->stop(); // first, because the action may yield
        action();
    });
    timer->start(0);
}
