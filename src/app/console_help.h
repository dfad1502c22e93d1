// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class Connecting;
class ConsoleWords;
class Exchange;
class KeptHistory;
class Learning;
class StatusBar;
struct Services;

/// What helps at the console line: its completion, the words that are learned from the server, and the history that is
/// kept between runs.
class ConsoleHelp final : public QObject {
    Q_OBJECT

public:
    /// `window` holds the line and the item "Learn from this server", which are found by their names, and becomes the
    /// parent.
    ConsoleHelp(const Services &services, const Exchange &exchange, const Connecting &connecting, QWidget &window);

    /// How far the learning is, is told there.
    void tell(StatusBar &statusBar);
    /// The program ends: what has been learned by now is kept.
    void end();
    [[nodiscard]] KeptHistory &history() { return *kept; }

private:
    void wireLearning(const Connecting &connecting, QWidget &window);

    ConsoleWords *words;
    Learning *learning;
    KeptHistory *kept;
};
