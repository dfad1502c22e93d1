// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class Exchange;
class LedgerWatch;
class OtherWindows;
class Recorder;
class StatusBar;
class UDPClient;
struct Services;

/// The menu "Tools" and what looks on behind it: the ledger and the recorder.
class ToolsMenu final : public QObject {
    Q_OBJECT

public:
    /// `window` holds the items, which are found by their names, and becomes the parent.
    ToolsMenu(const Services &services, const Exchange &exchange, const UDPClient &udpclient, OtherWindows &others_,
              QWidget &window);

    /// What it sees is told there.
    void tell(StatusBar &statusBar);
    /// The program ends: what is being recorded is written to its end.
    void end() const;

private:
    OtherWindows &others;
    LedgerWatch *ledgerWatch;
    Recorder *recorder;
};
