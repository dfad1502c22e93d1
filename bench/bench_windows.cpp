// SPDX-License-Identifier: MIT
#include "app/composition.h"
#include "base/application.h"
#include "base/clock.h"
#include "base/dialog_prompts.h"
#include "output/rcon_pane.h"
#include "row.h"
#include "settings/saved_servers.h"

#include <QCheckBox>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QListWidget>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

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

constexpr qint64 turnLength = 20;   // milliseconds, as long as the program reads a flood before the window's turn
constexpr qint64 patience = 10'000; // milliseconds for one of the window's turns

/// The window's turn: a click into one of its boxes, which asks nothing of the server, and whatever the window does
/// until the box has answered and the pane has been painted anew.
class Turn final : public QObject {
public:
    Turn(const QWidget &window_, QWidget *pane_) : window(window_), box(window.findChild<QCheckBox *>(u"chkremcol"_s))
    {
        pane_->installEventFilter(this);
        connect(box, &QCheckBox::clicked, this, [this] { answered = true; });
    }

    void pass()
    {
        answered = false;
        painted = false;
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, box->mapTo(&window, box->rect().center()));
        const QDeadlineTimer end(patience);
        while (!(answered && painted)) {
            if (end.hasExpired())
                qFatal("%s", answered ? "the pane was not painted" : "the click was not answered");
            QApplication::processEvents();
        }
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        painted |= event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    const QWidget &window;
    QCheckBox *box;
    bool answered = false;
    bool painted = false;
};

/// Adds text after text as a flood does it, and gives the window its turns.
bool fill(const char *what, Turn windowsTurn, const std::function<void(const QString &)> &append)
{
    const QString text(length - 1, u'x');
    const double before = allocatedMiB();
    double first = 0;
    double worst = 0;
    QElapsedTimer some;
    QElapsedTimer turn;
    some.start();
    turn.start();
    for (int number = 1; number <= appends; ++number) {
        append(text);
        if (turn.hasExpired(turnLength) || number == appends) {
            windowsTurn.pass();
            worst = std::max(worst, static_cast<double>(turn.nsecsElapsed()) / 1e6);
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
    kept &= row(name + ": the longest time until a click is answered and the pane painted", worst, 200, " ms");
    return kept;
}

bool thousandServers(IniFile &ini)
{
    QStringList rows;
    for (int number = 1; number <= 1000; ++number)
        rows.append(savedServerRow(u"server-%1.example"_s.arg(number), u"28960"_s));
    const QStringList passwords(rows.size(), u"secret"_s);

    const QList<IniEntry> entries = savedServerEntries(rows, passwords, 0);
    if (ini.write(entries))
        qFatal("the settings cannot be written");

    QElapsedTimer time;
    time.start();
    if (ini.write(entries)) // over the file of the last exit, which is read first
        qFatal("the settings cannot be written again");
    bool kept = row("1,000 saved servers: written at exit", static_cast<double>(time.nsecsElapsed()) / 1e6, 300, " ms");
    time.start();
    if (readSavedServers(ini.contents()).servercount != 1000)
        qFatal("the servers are not read as they were written");
    kept &= row("1,000 saved servers: read at start", static_cast<double>(time.nsecsElapsed()) / 1e6, 300, " ms");
    return kept;
}

} // namespace

int main(int argc, char *argv[])
{
    Application application(argc, argv);
    const QTemporaryDir folder;
    DialogPrompts prompts;
    const Clock clock;
    Composition program(prompts, clock, folder.filePath(u"molvark.ini"_s));
    program.window.show();
    if (!QTest::qWaitForWindowExposed(&program.window))
        qFatal("the window does not appear");
    program.window.Form_Load();
    auto *tabs = program.window.findChild<QTabWidget *>(u"SSTab"_s);
    tabs->setCurrentIndex(4); // "Players": only a box that is seen can be clicked

    Output &output = program.output;
    bool kept = fill("RCON pane", {program.window, output.pane()->viewport()},
                     [&output](const QString &text) { output.addrcon(text + u'\n'); });
    output.clearrcon();
    kept &= fill("Message list", {program.window, output.list()->viewport()},
                 [&output](const QString &text) { output.addmessage(text); });
    kept &= thousandServers(program.ini);
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
