// SPDX-License-Identifier: MIT
#include "app/composition.h"
#include "base/application.h"
#include "base/clock.h"
#include "base/dialog_prompts.h"
#include "median.h"
#include "output/message_list.h"
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

#include <algorithm>
#include <ctime>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int appends = 100'000;
constexpr int length = 200;
constexpr int compared = 10; // thousands of them

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

struct Pane {
    Turn turn;
    std::function<void(const QString &)> append;
};

/// Adds a thousand texts as a flood does it and gives the window its turns, of which `worst` is the longest, in
/// milliseconds. The processor time that it took, in no unit.
double addThousand(Pane &pane, double &worst)
{
    static const QString text(length - 1, u'x');
    const std::clock_t since = std::clock();
    QElapsedTimer turn;
    turn.start();
    for (int number = 1; number <= 1000; ++number) {
        pane.append(text);
        if (turn.hasExpired(turnLength) || number == 1000) {
            pane.turn.pass();
            worst = std::max(worst, static_cast<double>(turn.nsecsElapsed()) / 1e6);
            turn.start();
        }
    }
    return static_cast<double>(std::clock() - since);
}

/// The last lines of the one go in by turns with the first of the other, so that both meet the machine in the same
/// mood.
bool fill(const char *what, Pane full, Pane fresh)
{
    const double before = allocatedMiB();
    double worst = 0;
    for (int thousand = 0; thousand < appends / 1000 - compared; ++thousand)
        addThousand(full, worst);
    QList<double> last;
    QList<double> first;
    for (int thousand = 0; thousand < compared; ++thousand) {
        last.append(addThousand(full, worst));
        first.append(addThousand(fresh, worst));
    }
    constexpr double textMiB = 2.0 * (appends + 1000.0 * compared) * length / (1024 * 1024);
    const QByteArray name = what;
    bool kept = row(name + ": a thousand of the last 10,000 lines of 100,000, against one of the first",
                    median(last) / median(first), 1.5);
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
    Composition one(prompts, clock, folder.filePath(u"molvark.ini"_s));
    Composition other(prompts, clock, folder.filePath(u"molvark.ini"_s));
    for (MainWindow *window : {&one.window, &other.window}) {
        window->show();
        if (!QTest::qWaitForWindowExposed(window))
            qFatal("the window does not appear");
        window->Form_Load();
        window->findChild<QTabWidget *>(u"SSTab"_s)
            ->setCurrentIndex(4); // "Players": only a box that is seen is clicked
    }

    const auto rconPane = [](Composition &program) -> Pane {
        return {Turn(program.window, program.output.pane().viewport()),
                [&program](const QString &text) { program.output.addrcon(text + u'\n'); }};
    };
    const auto messageList = [](Composition &program) -> Pane {
        return {Turn(program.window, program.output.list().viewport()),
                [&program](const QString &text) { program.output.addmessage(text); }};
    };
    bool kept = fill("RCON pane", rconPane(one), rconPane(other));
    one.output.clearrcon();
    other.output.clearrcon();
    kept &= fill("Message list", messageList(one), messageList(other));
    kept &= thousandServers(one.ini);
    return kept ? EXIT_SUCCESS : EXIT_FAILURE;
}
