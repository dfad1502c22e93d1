// SPDX-License-Identifier: MIT
#include "tour.h"

#include "app/main_window.h"
#include "book/time_plot.h"
#include "callouts.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextStream>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30'000; // milliseconds that any one step may take

bool waitFor(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(patience);
    while (!condition() && !deadline.hasExpired())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    return condition();
}

void pressKey(QWidget &line, int key, const QString &text = {})
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&line, &press);
}

QWidget *windowNamed(const QString &name)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find(windows, name, &QObject::objectName);
    return found == windows.end() ? nullptr : *found;
}

bool failed(const QString &step)
{
    QTextStream(stderr) << "The walk failed: " << step << Qt::endl;
    return false;
}

} // namespace

bool Tour::showFirstWindow()
{
    const auto *password = window.findChild<QLineEdit *>(u"txtPWD"_s);
    // The eye in the field is the last thing that comes.
    if (!waitFor([&] { return password->findChild<QAction *>(u"acteye"_s) != nullptr; }))
        return failed(u"the window was not painted"_s);
    return save(withNumbers(window), u"first-window.png"_s);
}

bool Tour::walk()
{
    if (!waitUntilConnected() || !askServer() || !populateTabs() || !visitBook() || !visitTabs() || !visitWindows() ||
        !completeLine() || !visitLedger() || !visitTimetable())
        return false;
    printWhatIsShown();
    return true;
}

bool Tour::waitUntilConnected()
{
    const auto *button = window.findChild<QPushButton *>(u"cmdconnect"_s);
    const auto *files = window.findChild<QComboBox *>(u"lstcfgs"_s);
    // The list of CFG files is the last thing that connecting asks for.
    const bool connected = waitFor([&] { return button->property("Tag").toString() == u"YES" && files->count() > 1; });
    return connected || failed(u"the program did not connect"_s);
}

bool Tour::askServer()
{
    window.findChild<QPushButton *>(u"cmdstatus"_s)->click();
    window.findChild<QComboBox *>(u"comdirect"_s)->setEditText(u"sv_hostname"_s);
    window.findChild<QPushButton *>(u"cmdsend"_s)->click();
    const auto *pane = window.findChild<QPlainTextEdit *>(u"txtoutput"_s);
    const bool answered = waitFor([&] {
        const QString text = pane->toPlainText();
        return text.contains(u"num score ping guid") && text.contains(u"\"sv_hostname\" is:");
    });
    return answered || failed(u"the console commands got no answer"_s);
}

bool Tour::populateTabs()
{
    // Each click returns when its page has been read.
    for (const QString &button : {u"cmdservpop"_s, u"cmdpopmaps"_s, u"cmdpopwep"_s, u"cmdplypop"_s, u"cmdCodOther_1"_s})
        window.findChild<QPushButton *>(button)->click();
    auto *grid = window.findChild<QTableView *>(u"msfplayers"_s);
    grid->selectRow(2);
    auto *maps = window.findChild<QListWidget *>(u"lstmaps"_s);
    maps->setCurrentRow(0);
    window.findChild<QLineEdit *>(u"txtmess"_s)->setText(u"^3Welcome ^7to %SN%, ^1no cheats^7!"_s);
    const bool read = !window.findChild<QLineEdit *>(u"txtservername"_s)->text().isEmpty() && maps->count() > 0 &&
                      grid->model()->rowCount() > 0;
    return read || failed(u"the tabs could not be read from the server"_s);
}

bool Tour::visitTabs()
{
    auto *tabs = window.findChild<QTabWidget *>(u"SSTab"_s);
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        const QString caption = tabs->tabText(tab).toLower().replace(u' ', u'-');
        if (!takePicture(window, u"%1-%2.png"_s.arg(tab).arg(caption)))
            return false;
    }
    return true;
}

// A book of the last week, with somebody who is flagged and somebody with a note among those who are there.
bool Tour::visitBook()
{
    window.findChild<QAction *>(u"mbook"_s)->trigger();
    QWidget *const found = windowNamed(u"frmbook"_s);
    if (!found)
        return failed(u"no player book"_s);
    QWidget &book = *found;
    book.findChild<QCheckBox *>(u"chkbook"_s)->click();
    window.findChild<QPushButton *>(u"cmdplypop"_s)->click();
    if (!writeIntoBook(book) || !banTwo())
        return false;
    auto *pages = book.findChild<QTabWidget *>(u"tabbook"_s);
    const auto *bans = book.findChild<QTableView *>(u"tblbans"_s);
    if (!waitFor([bans] { return bans->model()->rowCount() == 2; }))
        return failed(u"the bans are not in the book"_s);
    const QStringList names{u"frmbook.png"_s, u"frmbook-servers.png"_s, u"frmbook-bans.png"_s};
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        const auto *plot = pages->currentWidget()->findChild<TimePlot *>();
        if (plot && !waitFor([plot] { return !plot->isEmpty(); }))
            return failed(u"nothing is plotted"_s);
        if (page == 2) {
            bans->model()->setData(bans->model()->index(1, 4), u"Wallhack, seen by three"_s);
            pages->currentWidget()->findChild<QTableView *>()->selectRow(1);
        }
        if (!takePicture(book, names.at(page)))
            return false;
    }
    book.close();
    return true;
}

// One who is flagged, one with a note, and one whose row may be damaged besides.
bool Tour::writeIntoBook(QWidget &book)
{
    const QAbstractItemModel *grid = window.findChild<QTableView *>(u"msfplayers"_s)->model();
    const auto guid = [grid](int row) { return grid->index(row, 2).data().toString(); };
    int damaged = 0;
    while (damaged < grid->rowCount() - 1 && !grid->index(damaged, 0).data(Qt::DecorationRole).isValid())
        ++damaged;
    auto *flag = book.findChild<QCheckBox *>(u"chkbookflag"_s);
    for (const int row : {1, damaged}) {
        if (!choose(book, guid(row)))
            return failed(u"no player is shown"_s);
        flag->click();
    }
    const auto *notes = book.findChild<QListWidget *>(u"lstbooknotes"_s);
    if (!choose(book, guid(4)))
        return failed(u"no player is shown"_s);
    book.findChild<QLineEdit *>(u"txtbooknote"_s)->setText(u"Shoots through walls? Watch him on mp_toujane."_s);
    book.findChild<QPushButton *>(u"cmdbooknote"_s)->click();
    book.findChild<QLineEdit *>(u"txtbooksearch"_s)->clear();
    return waitFor([notes] { return notes->count() == 1; }) || failed(u"no note is shown"_s);
}

bool Tour::choose(QWidget &book, const QString &guid)
{
    book.findChild<QLineEdit *>(u"txtbooksearch"_s)->setText(guid);
    auto *list = book.findChild<QTableView *>(u"tblbook"_s);
    const auto *who = book.findChild<QLabel *>(u"lblbookplayer"_s);
    const auto isFound = [&] {
        return list->model()->rowCount() == 1 && list->model()->index(0, 1).data().toString() == guid;
    };
    if (!waitFor(isFound))
        return false;
    list->selectRow(0);
    return waitFor([&] { return who->text().endsWith(guid); });
}

bool Tour::banTwo()
{
    auto *grid = window.findChild<QTableView *>(u"msfplayers"_s);
    for (const QString &button : {u"cmdplyban"_s, u"cmdtempban"_s}) {
        const int before = grid->model()->rowCount();
        grid->selectRow(before - 2);
        window.findChild<QPushButton *>(button)->click();
        if (grid->model()->rowCount() != before - 1)
            return failed(u"nobody was banned"_s);
    }
    grid->selectRow(2);
    return true;
}

bool Tour::visitWindows()
{
    window.findChild<QAction *>(u"mpref"_s)->trigger();
    window.findChild<QAction *>(u"helpabout"_s)->trigger();
    window.findChild<QPushButton *>(u"cmdhob"_s)->click();
    window.findChild<QAction *>(u"mcheck"_s)->trigger();
    window.findChild<QAction *>(u"mrotation"_s)->trigger();
    addUnknownMap();
    for (const QString &name : {u"frmpref"_s, u"frmAbout"_s, u"frmhob"_s, u"frmcheck"_s, u"frmrotation"_s}) {
        QWidget *const found = windowNamed(name);
        if (!found || !waitUntilChecked(*found) || !takePicture(*found, name + u".png"_s))
            return failed(u"no window "_s + name);
        found->close();
    }
    return true;
}

// Of a variable that the tabs have read.
bool Tour::completeLine()
{
    auto *line = window.findChild<QComboBox *>(u"comdirect"_s);
    line->setFocus();
    line->clearEditText();
    for (const QChar each : u"sv_ma"_s)
        pressKey(*line, 0, each);
    pressKey(*line, Qt::Key_Down);
    const auto *list = window.findChild<QWidget *>(u"lstcomplete"_s);
    if (!list || !list->isVisible())
        return failed(u"the console line did not complete"_s);
    const bool taken = takePicture(window, u"console-completion.png"_s);
    pressKey(*line, Qt::Key_Escape);
    line->clearEditText();
    return taken;
}

// Lines of which the server makes different things; the details are those of the one that needs them most.
bool Tour::visitLedger()
{
    window.findChild<QAction *>(u"mledger"_s)->trigger();
    QWidget *const found = windowNamed(u"frmledger"_s);
    if (!found)
        return failed(u"no ledger"_s);
    QWidget &ledger = *found;
    ledger.resize(900, 560);
    auto *table = ledger.findChild<QTableView *>(u"tblledger"_s);
    const QStringList lines{u"say Good evening"_s,
                            u"set g_password letmein"_s,
                            u"sv_hostname"_s,
                            u"map_rotat"_s,
                            u"exec"_s,
                            u"say \u017B\u00F3\u0142w"_s,
                            u"set motd "_s + QString(1100, u'-'),
                            u"clientkick 31"_s};
    for (const QString &line : lines) {
        if (!enter(line, *table->model()))
            return failed(u"no verdict on "_s + line);
    }
    QApplication::processEvents(); // it follows the newest
    table->selectRow(table->model()->rowCount() - 1);
    const bool isTaken = takePicture(ledger, u"frmledger.png"_s);
    ledger.close();
    return isTaken;
}

bool Tour::visitTimetable()
{
    window.findChild<QAction *>(u"mtimetable"_s)->trigger();
    QWidget *const found = windowNamed(u"frmtimetable"_s);
    if (!found)
        return failed(u"no timetable"_s);
    QWidget &timetable = *found;
    const auto add = [&timetable](const QString &name, const QString &commands, const QString &when) {
        timetable.findChild<QPushButton *>(u"cmdttadd"_s)->click();
        timetable.findChild<QLineEdit *>(u"txtttname"_s)->setText(name);
        timetable.findChild<QPlainTextEdit *>(u"txtttcommands"_s)->setPlainText(commands);
        timetable.findChild<QComboBox *>(u"comttwhen"_s)->setCurrentText(when);
        timetable.findChild<QCheckBox *>(u"chkttday_4"_s)->setChecked(true);
        timetable.findChild<QCheckBox *>(u"chkttactive"_s)->setChecked(true);
    };
    add(u"Fresh map when nobody is there"_s, u"map_restart"_s, u"when empty"_s);
    add(u"Friday night"_s, u"say Match night: the server restarts its map\nset g_password letmein\nmap_restart"_s,
        u"at a time"_s);
    timetable.findChild<QPushButton *>(u"cmdttrun"_s)->click();
    const auto *results = timetable.findChild<QListWidget *>(u"lstttresults"_s);
    const bool isDone = waitFor(
        [results] { return results->count() > 0 && results->item(0)->text().contains(u"the server answered"_s); });
    const bool isTaken = isDone && takePicture(timetable, u"frmtimetable.png"_s);
    timetable.close();
    return isTaken || failed(u"the timetable's list was not answered"_s);
}

bool Tour::enter(const QString &line, const QAbstractItemModel &ledger)
{
    const int before = ledger.rowCount();
    window.findChild<QComboBox *>(u"comdirect"_s)->setEditText(line);
    window.findChild<QPushButton *>(u"cmdsend"_s)->click();
    const int datagrams = 4; // column
    return waitFor(
        [&] { return ledger.rowCount() > before && ledger.index(before, datagrams).data().toString() != u"0"; });
}

// So that the picture has a problem to show.
void Tour::addUnknownMap()
{
    for (const QWidget *shown : QApplication::topLevelWidgets()) {
        if (auto *map = shown->findChild<QComboBox *>(u"comrotmap"_s)) {
            map->setEditText(u"mp_harbour"_s);
            shown->findChild<QPushButton *>(u"cmdrotadd"_s)->click();
        }
    }
}

// The connection check takes a few seconds.
bool Tour::waitUntilChecked(const QWidget &shown)
{
    const auto *again = shown.findChild<QPushButton *>(u"cmdcheckagain"_s);
    return !again || waitFor([again] { return again->isEnabled(); });
}

bool Tour::takePicture(QWidget &shown, const QString &name)
{
    QApplication::processEvents();
    return save(shown.grab(), name);
}

bool Tour::save(const QPixmap &picture, const QString &name) const
{
    const QString file = QDir(folder).filePath(name);
    return picture.save(file) || failed(u"no picture could be written to "_s + file);
}

void Tour::printWhatIsShown() const
{
    QTextStream out(stdout);
    out << "Pictures of every tab: " << QDir(folder).absolutePath() << "\n\nThe RCON pane shows:\n"
        << window.findChild<QPlainTextEdit *>(u"txtoutput"_s)->toPlainText() << "\n\nThe message list shows:\n";
    const auto *messages = window.findChild<QListWidget *>(u"lstmessages"_s);
    for (int row = 0; row < messages->count(); ++row)
        out << messages->item(row)->text() << '\n';
    out.flush();
}
