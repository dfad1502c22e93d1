// SPDX-License-Identifier: MIT
#pragma once

#include "errand.h"
#include "ledger/check_runner.h"
#include "server_errand.h"

/// The steps of the connection check, each printed when it is known.
class CheckErrand final : public Errand {
    Q_OBJECT

public:
    CheckErrand(CliOutput &output_, const Asking &asking_);

    void begin() override;
    [[nodiscard]] bool isLookingUp() const override { return runner.isLookingUp(); }

private:
    void print(const CheckStep &step);
    void takeEnd();
    void endLookUp();
    void stop() override;
    [[nodiscard]] std::chrono::milliseconds untilHeard() const override;

    const Asking asking;
    CheckRunner runner;
    QElapsedTimer sinceCommand;
    QTimer lookUp;
};
