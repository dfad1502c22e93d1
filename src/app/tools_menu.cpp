// SPDX-License-Identifier: MIT
#include "tools_menu.h"

#include "ledger/ledger_watch.h"
#include "ledger/recorder.h"
#include "other_windows.h"
#include "rcon/connecting.h"
#include "rcon/services.h"
#include "status_bar.h"
#include "timetable/timetable.h"

#include <QAction>

using namespace Qt::StringLiterals;

ToolsMenu::ToolsMenu(const Services &services_, const Connecting &connecting_, const Exchange &exchange,
                     const UDPClient &udpclient_, OtherWindows &others_, QWidget &window)
    : QObject(&window),
      services(services_),
      connecting(connecting_),
      udpclient(udpclient_),
      others(others_),
      ledgerWatch(new LedgerWatch(exchange, udpclient, services.clock, this)),
      recorder(new Recorder(exchange, udpclient, ledgerWatch->ledger().passwords(), services.output, services.prompts,
                            services.clock, this))
{
    const auto item = [&window](QLatin1StringView name) { return window.findChild<QAction *>(name); };
    connect(item("mledger"_L1), &QAction::triggered, this, [this] { others.showledger(ledgerWatch->ledger()); });
    connect(item("mtimetable"_L1), &QAction::triggered, this, [this] { others.showtimetable(timetableNow()); });
    connect(item("mcheck"_L1), &QAction::triggered, &others, &OtherWindows::mcheck_Click);

    connect(&others, &OtherWindows::checksent, &ledgerWatch->ledger(),
            [ledger = &ledgerWatch->ledger()](const QByteArray &, const QString &password) { ledger->hide(password); });
    connect(&others, &OtherWindows::checksent, recorder, &Recorder::takeCheckSent);
    connect(&others, &OtherWindows::checkread, recorder, &Recorder::takeCheckRead);
    QAction *record = item("mrecord"_L1);
    connect(record, &QAction::triggered, recorder, &Recorder::mrecord_Click);
    connect(recorder, &Recorder::recordingchanged, record, [record](bool isRecording) {
        record->setText(isRecording ? u"Stop &recording"_s : u"&Record traffic..."_s);
    });
}

void ToolsMenu::end() const
{
    recorder->stop();
}

void ToolsMenu::tell(StatusBar &statusBar_)
{
    statusBar = &statusBar_;
    connect(&ledgerWatch->ledger(), &Ledger::judged, statusBar, [bar = statusBar](const LedgerEntry &entry) {
        bar->showVerdict(entry.number, isGood(entry.verdict) ? QString() : verdictWord(entry.verdict), entry.command);
    });
    connect(statusBar, &StatusBar::verdictclicked, this,
            [this](int number) { others.showledger(ledgerWatch->ledger(), number); });
    connect(recorder, &Recorder::recordingchanged, statusBar, &StatusBar::showRecording);
}

void ToolsMenu::load()
{
    if (Timetable::isKept(services.ini))
        (void)timetableNow();
}

Timetable &ToolsMenu::timetableNow()
{
    if (timetable)
        return *timetable;
    timetable = new Timetable(services, udpclient, this);
    timetable->setConnected(connecting.state() == Connecting::State::Connected);
    connect(&connecting, &Connecting::statechanged, timetable,
            [this](Connecting::State state) { timetable->setConnected(state == Connecting::State::Connected); });
    connect(&ledgerWatch->ledger(), &Ledger::judged, timetable, [this](const LedgerEntry &entry) {
        timetable->takeVerdict(entry.number, isGood(entry.verdict), verdictWord(entry.verdict));
    });
    connect(timetable, &Timetable::told, statusBar, &StatusBar::showTimetable);
    if (const QString trouble = timetable->trouble(); !trouble.isEmpty())
        statusBar->showTimetable(trouble);
    return *timetable;
}

const Ledger &ToolsMenu::ledger() const
{
    return ledgerWatch->ledger();
}
