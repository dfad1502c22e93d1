// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

class Prompts;

/// The application: a fault that no handler trapped is shown in a box, and the program goes on. A button that is being
/// pressed when a box opens is let go, and the click does not count: the release comes to the box.
class Application final : public QApplication {
    Q_OBJECT

public:
    Application(int &argc, char **argv);

    /// Where untrapped faults are shown; nowhere before it is set. The prompts must outlive the event loop.
    void setPrompts(Prompts *shower) { prompts = shower; }
    bool notify(QObject *receiver, QEvent *event) override;

private:
    bool notifyTrapped(QObject *receiver, QEvent *event);

    int blockings = 0; ///< how often a box has closed a window off
    Prompts *prompts = nullptr;
};
