// SPDX-License-Identifier: MIT
#include "app/composition.h"
#include "base/clock.h"
#include "base/dialog_prompts.h"
#include "output/rcon_pane.h"
#include "row.h"
#include "settings/saved_servers.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>

#include <malloc.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int appends = 100'000;
constexpr int length = 200;
constexpr int compared = 10'000; // a thousand take less than a turn, and so would or would not hold one

/// What is allocated, also in pages of its own; what was freed meanwhile does not count.
double allocatedMiB()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / (1024 * 1024);
}

constexpr qint64 turnLength = 20; // milliseconds, as long as the program reads a flood before the window's turn

/// Adds text after text as a flood does it. In each of the window's turns it repaints and answers a click.
bool fill(const char *what, const std::function<void(const QString &)> &append)
{
    const QString text(length - 1, u'x');
    const double before = allocatedMiB();
    QPushButton button;
    int answered = 0;
    QObject::connect(&button, &QPushButton::clicked, [&answered] { ++answered; });

    double first = 0;
    double worst = 0;
    int turns = 0;
    QElapsedTimer some;
    QElapsedTimer turn;
    some.start();
    turn.start();
    for (int number = 1; number <= appends; ++number) {
        append(text);
        if (turn.hasExpired(turnLength) || number == appends) {
            QMetaObject::invokeMethod(&button, &QPushButton::click, Qt::QueuedConnection);
            QApplication::processEvents();
            worst = std::max(worst, static_cast<double>(turn.nsecsElapsed()) / 1e6);
            ++turns;
            turn.start();
        }
        if (number == compared)
            first = static_cast<double>(some.nsecsElapsed());
        if (number == appends - compared)
            some.start();
    }
    const auto last = static_cast<double>(some.nsecsElapsed());
    constexpr double textMiB = 2.0 * appends * length / (1024 * 1024);
    const QByteArray name = what;
    bool kept = row(name + ": the last 10,000 lines of 100,000, against the first", last / first, 1.5);
    kept &= row(name + ": memory, against the text's own", (allocatedMiB() - before) / textMiB, 4);
    kept &= row(name + ": the longest time without the window's turn", worst, 200, " ms");
    return kept && answered == turns;
}

bool thousandServers(IniFile &ini)
{
    QStringList rows;
    for (int number = 1; number <= 1000; ++number)
        rows.append(savedServerRow(u"server-%1.example"_s.arg(number), u"28960"_s));
    const QStringList passwords(rows.size(), u"secret"_s);

    QElapsedTimer time;
    time.start();
    if (ini.write(savedServerEntries(rows, passwords, 0)))
        return false;
    bool kept = row("1,000 saved servers: written at exit", static_cast<double>(time.nsecsElapsed()) / 1e6, 300, " ms");
    time.start();
    if (readSavedServers(ini.contents()).servercount != 1000)
        return false;
    kept &= row("1,000 saved servers: read at start", static_cast<double>(time.nsecsElapsed()) / 1e6, 300, " ms");
    return kept;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    DialogPrompts prompts;
    const Clock clock;
    Composition program(prompts, clock, folder.filePath(u"molvark.ini"_s));
    program.window.show();
    QApplication::processEvents();

    bool kept = fill("RCON pane", [&program](const QString &text) { program.output.addrcon(text + u'\n'); });
    program.output.clearrcon();
    kept &= fill("Message list", [&program](const QString &text) { program.output.addmessage(text); });
    kept &= thousandServers(program.ini);
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
