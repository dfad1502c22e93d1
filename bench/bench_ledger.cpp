// SPDX-License-Identifier: MIT
#include "ledger/ledger.h"
#include "median.h"
#include "row.h"

#include <QElapsedTimer>
#include <QList>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 50;
constexpr int commands = 1000; // in a round, in a ledger that is full

const QByteArray header("\xFF\xFF\xFF\xFF");

/// In microseconds: what the ledger costs for one command and its answer.
double costOf(Ledger &ledger, int &number, const QString &comm, const QString &reply)
{
    const QString password = u"practice"_s;
    const QByteArray datagram = header + "rcon practice " + comm.toLatin1();
    QElapsedTimer time;
    time.start();
    for (int command = 0; command < commands; ++command) {
        const Ledger::Time at = std::chrono::seconds(++number);
        ledger.sent({number, comm, password, datagram}, QDateTime::currentDateTime(), at);
        ledger.came({header + "print\n", reply, reply.size() + 10}, at);
        ledger.over(number, true);
    }
    return static_cast<double>(time.nsecsElapsed()) / 1e3 / commands;
}

bool entry(const char *what, const QString &comm, const QString &reply)
{
    Ledger ledger;
    int number = 0;
    (void)costOf(ledger, number, comm, reply); // fills it
    QList<double> times;
    for (int round = 0; round < rounds; ++round)
        times.append(costOf(ledger, number, comm, reply));
    return row(what, median(times), 20, " us");
}

} // namespace

int main()
{
    bool kept = entry("an entry of the ledger, as short as they are", u"say hello"_s, {});
    kept &= entry("with a full datagram", u"status"_s, QString(1294, u'x'));
    kept &= entry("with the longest command", u"set g_password "_s + QString(990, u'x'), QString(1294, u'x'));
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
