// SPDX-License-Identifier: MIT
#pragma once

#include "practice_options.h"

#include <QHostAddress>
#include <QString>
#include <QStringList>

/// What the console program was asked for on its command line.
struct PracticeArguments {
    PracticeOptions options;
    QHostAddress address{QHostAddress::LocalHost};
    quint16 port = gamePort; ///< 0 for any free one
    QString replay;          ///< the recording to answer from; empty for the game
    QString notice;          ///< a text to print instead of serving: the help or the version
    QString fault;           ///< what is wrong with the arguments, one line; empty when nothing is
};

/// Reads `arguments`, of which the first is the program's name.
[[nodiscard]] PracticeArguments readPracticeArguments(const QStringList &arguments);
