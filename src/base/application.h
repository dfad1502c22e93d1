// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

class Prompts;

/// The application: a fault that no handler trapped is shown in a box, and the program goes on.
class Application final : public QApplication {
    Q_OBJECT

public:
    Application(int &argc, char **argv);

    /// Where untrapped faults are shown; nowhere before it is set. The prompts must outlive the event loop.
    void setPrompts(Prompts *shower) { prompts = shower; }
    bool notify(QObject *receiver, QEvent *event) override;

private:
    Prompts *prompts = nullptr;
};
