// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class Connecting;
class Exchange;
class Ledger;
class LedgerWatch;
class OtherWindows;
class Recorder;
class StatusBar;
class Timetable;
class UDPClient;
struct Services;

/// The menu "Tools" and what looks on behind it: the ledger, the recorder and the timetable.
class ToolsMenu final : public QObject {
    Q_OBJECT

public:
    /// `window` holds the items, which are found by their names, and becomes the parent.
    ToolsMenu(const Services &services_, const Connecting &connecting_, const Exchange &exchange,
              const UDPClient &udpclient_, OtherWindows &others_, QWidget &window);

    /// What it sees is told there.
    void tell(StatusBar &statusBar_);
    /// Begins what the person has left switched on.
    void load();
    /// The program ends: what is being recorded is written to its end.
    void end() const;
    [[nodiscard]] const Ledger &ledger() const;

private:
    [[nodiscard]] Timetable &timetableNow();

    const Services &services;
    const Connecting &connecting;
    const UDPClient &udpclient;
    OtherWindows &others;
    StatusBar *statusBar = nullptr;
    LedgerWatch *ledgerWatch;
    Recorder *recorder;
    Timetable *timetable = nullptr; ///< built when there is one
};
