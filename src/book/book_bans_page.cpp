// SPDX-License-Identifier: MIT
#include "book_bans_page.h"
#include "ui_book_bans_page.h"

#include "ban_lines.h"
#include "ban_list_model.h"
#include "base/clock.h"
#include "base/list_views.h"
#include "base/prompts.h"
#include "base/replaced_file.h"
#include "base/system_error.h"
#include "book.h"
#include "book_store.h"
#include "book_text.h"
#include "book_watch.h"
#include "rcon/conversation.h"
#include "rcon/services.h"
#include "settings/whole_file.h"
#include "shown_time.h"
#include "unban_command.h"

#include <QFileInfo>
#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = 1024LL * 1024; // bytes: some 30,000 bans
constexpr qsizetype mostNamed = 15;           // bans in a box

QString banText(const BookBan &ban)
{
    return ban.state == BookBan::Imported && ban.server.isEmpty()
               ? u"imported %1, GUID %2"_s.arg(shownTime(ban.time), ban.guid)
               : u"%1, GUID %2"_s.arg(shownTime(ban.time), ban.guid);
}

/// The bans in a box.
QString banTexts(const QList<BookBan> &bans)
{
    QStringList lines;
    for (const BookBan &ban : bans.first(std::min(bans.size(), mostNamed)))
        lines.append(banText(ban));
    if (bans.size() > mostNamed)
        lines.append(u"and %1 more"_s.arg(bans.size() - mostNamed));
    return lines.join(u'\r');
}

QString countOf(qsizetype count, const QString &one, const QString &many)
{
    return count == 1 ? u"1 "_s + one : QString::number(count) + u' ' + many;
}

/// What came of an import.
struct ImportOutcome {
    int taken = 0;
    qsizetype read = 0;
    int unreadable = 0;
};

} // namespace

/// The bans of one name that a server lifts together.
struct BookBansPage::Unbanning {
    QString server;
    QString name; ///< as in its ban file
    QList<BookBan> bans;
    int edition = 0; ///< of the book that they are in
};

BookBansPage::BookBansPage(Book &book_, BookWatch &watch_, const Services &services_, QWidget *parent)
    : QWidget(parent),
      book(book_),
      watch(watch_),
      services(services_),
      ui(std::make_unique<Ui::BookBansPage>()),
      bans(new BanListModel(this))
{
    ui->setupUi(this);
    showModel(*ui->tblbans, *bans, {17, 22, 20, 12, 0, 10});
    connect(ui->tblbans->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { say({}); });
    connect(bans, &BanListModel::reasonedited, this, [this](qint64 action, const QString &reason) {
        watch.write([action, reason](BookStore &store) { store.setReason(action, reason); }, book.edition());
    });
    connect(&watch, &BookWatch::serverchanged, this, &BookBansPage::offer);
    connect(ui->cmdunban, &QPushButton::clicked, this, &BookBansPage::cmdunban_Click);
    connect(ui->cmdbanimport, &QPushButton::clicked, this, &BookBansPage::cmdbanimport_Click);
    connect(ui->cmdbanexport, &QPushButton::clicked, this, &BookBansPage::cmdbanexport_Click);
    offer();
}

BookBansPage::~BookBansPage() = default;

void BookBansPage::reload()
{
    if (isBeingEdited(*ui->tblbans))
        return;
    book.ask([](BookStore &store) { return store.bans(); }, this,
             [this](const QList<BookBan> &answer) { showBans(answer); });
}

void BookBansPage::showBans(const QList<BookBan> &answer)
{
    if (isBeingEdited(*ui->tblbans))
        return;
    const QString said = outcome; // choosing the same one again says nothing new
    const qint64 action = chosen() ? chosen()->action : -1;
    bans->setBans(answer);
    if (const int row = bans->rowOf(action); row >= 0 && row != ui->tblbans->currentIndex().row())
        ui->tblbans->setCurrentIndex(bans->index(row, 0));
    outcome = said;
    offer();
}

void BookBansPage::clear()
{
    isAsked = false;
    bans->setBans({});
    say({});
}

const BookBan *BookBansPage::chosen() const
{
    const int row = ui->tblbans->currentIndex().row();
    return row >= 0 && row < bans->rowCount() ? &bans->bans().at(row) : nullptr;
}

// Why the ban cannot be lifted from here; empty when it can.
QString BookBansPage::obstacle(const BookBan &ban) const
{
    if (ban.state == BookBan::Temporary)
        return u"A temporary ban ends by itself; no command lifts it."_s;
    if (!isInBanFile(ban))
        return u"This ban is not in force."_s;
    const QString name = nameInBanFile(ban);
    if (name.contains(u'"'))
        return u"This ban cannot be lifted by a command: there is a quotation mark in the name. Remove its line from "
               u"the "
               "server's ban file."_s;
    if (unbanCommand(name).isEmpty())
        return u"This ban cannot be lifted by a command: it has no name. Remove its line from the server's ban file."_s;
    if (watch.server().isEmpty())
        return u"Connect to the server to lift this ban."_s;
    if (!ban.server.isEmpty() && !isSameServer(ban.server, watch.server()))
        return u"Connect to %1 to lift this ban: it was done there."_s.arg(ban.server);
    return {};
}

void BookBansPage::offer()
{
    const BookBan *ban = chosen();
    const QString why = ban ? obstacle(*ban) : u"Choose a ban to lift it."_s;
    ui->cmdunban->setEnabled(book.isOpen() && ban && why.isEmpty() && !isAsked && !isUnbanning);
    ui->cmdbanimport->setEnabled(book.isOpen());
    ui->cmdbanexport->setEnabled(book.isOpen() && bans->rowCount() > 0);
    const QString now = outcome.isEmpty() ? why : outcome;
    ui->lblbanhint->setText(
        u"No command lists the bans of a server: these are the ones that were done here or read from a "
        "ban file."_s +
        (now.isEmpty() ? QString() : u'\n' + now));
}

void BookBansPage::cmdunban_Click()
{
    const BookBan *ban = chosen();
    if (!ban || isAsked || isUnbanning)
        return;
    isAsked = true;
    offer();
    book.ask([server = watch.server(),
              name = nameInBanFile(*ban)](BookStore &store) { return store.liftedWith(server, name); },
             this,
             [this, server = watch.server(), name = nameInBanFile(*ban)](const QList<BookBan> &lifted) {
                 isAsked = false;
                 if (server == watch.server())
                     confirmUnban({server, name, lifted, book.edition()});
                 offer();
             },
             [this] {
                 isAsked = false;
                 offer();
             });
}

// The box may stand for long, and the person connect elsewhere meanwhile.
void BookBansPage::confirmUnban(const Unbanning &unbanning)
{
    const QScopedValueRollback busy(isUnbanning, true);
    offer();
    const QString question = u"The server %1 lifts all bans of the name %2. In the book that is:\r%3\rUnban?"_s;
    const Answer answer = services.prompts.ask(
        {u"Unban"_s, question.arg(unbanning.server, cutName(unbanning.name), banTexts(unbanning.bans)),
         BoxIcon::Question, BoxButtons::YesNo});
    if (answer == Answer::Yes && unbanning.server == watch.server() && book.isOpen())
        unban(unbanning);
}

// Sent once: to the second of two copies the server would answer that it has no such ban, whatever became of the first.
void BookBansPage::unban(const Unbanning &unbanning)
{
    const QString command = unbanCommand(unbanning.name);
    const auto word = std::make_shared<QString>();
    watch.follow(command,
                 {.sent = {}, .judged = [page = QPointer(this), word, unbanning](const CommandVerdict &verdict) {
                      *word = verdict.word;
                      if (page)
                          page->takeVerdict(unbanning, verdict);
                  }});
    const QString asking = u"Asking the server to lift the bans of %1..."_s.arg(cutName(unbanning.name));
    say(asking);
    const Conversation talk(services);
    const Fate fate = talk.tellOnce(command);
    watch.unfollow(command);
    if (outcome == asking || (word->isEmpty() && (fate == Fate::HeldUp || fate == Fate::Unsent)))
        say(fate == Fate::HeldUp ? u"Another command came between, and the server has not been asked: try again."_s
                                 : u"The server has not been asked: nothing has been lifted."_s);
    if (*word == nobodyVerdict && talk.isOpen() && book.isOpen())
        offerToMark(unbanning);
}

// Those that were named before; what was banned since then came behind the command.
void BookBansPage::takeVerdict(const Unbanning &unbanning, const CommandVerdict &verdict)
{
    const QString name = cutName(unbanning.name);
    if (!verdict.isTaken)
        return say(u"The bans of %1 have not been lifted: %2."_s.arg(name, verdict.word));
    lift(unbanning);
    say(u"The server has lifted the bans of %1: %2."_s.arg(name, verdict.word));
}

// They were lifted before, perhaps by an answer that was lost, and would be in force in the book for ever.
void BookBansPage::offerToMark(const Unbanning &unbanning)
{
    const QString name = cutName(unbanning.name);
    const QString question = u"The server %1 says that it has no ban of the name %2. It may have been lifted already, "
                             "or be there under another name.\rMark as lifted in the book?\r%3"_s;
    const Answer answer =
        services.prompts.ask({u"Unban"_s, question.arg(unbanning.server, name, banTexts(unbanning.bans)),
                              BoxIcon::Question, BoxButtons::YesNo});
    if (answer != Answer::Yes || !book.isOpen())
        return;
    lift(unbanning);
    say(u"The bans of %1 are marked as lifted: the server has none of that name."_s.arg(name));
}

void BookBansPage::lift(const Unbanning &unbanning)
{
    QList<qint64> actions;
    for (const BookBan &ban : unbanning.bans)
        actions.append(ban.action);
    watch.write([actions](BookStore &store) { store.lift(actions); }, unbanning.edition);
}

void BookBansPage::say(const QString &said)
{
    outcome = said;
    offer();
}

void BookBansPage::cmdbanimport_Click()
{
    const QString name = services.prompts.askFileToRead(u"Import bans"_s, u"Ban files (*.txt *.ban);;All files (*)"_s);
    if (name.isEmpty())
        return;
    const QString title = u"Import bans"_s;
    const QString failed = u"Error reading file, err %1\rNothing imported"_s;
    const QFileInfo info(name);
    if (info.isFile() && info.size() > largestFile)
        return services.prompts.refuse(
            u"This file is larger than 1 MB, and no server's list of bans\rNothing imported"_s, title);
    QByteArray bytes;
    const std::optional<Fault> fault =
        info.exists() ? readWholeFile(name, largestFile, bytes) : systemFault(std::errc::no_such_file_or_directory);
    if (fault)
        return services.prompts.refuse(failed.arg(fault->number()), title);
    importBans(bytes);
}

void BookBansPage::importBans(const QByteArray &file)
{
    const qint64 now = services.clock.now().toSecsSinceEpoch();
    book.ask(
        [file, now](BookStore &store) {
            const BanLines lines = readBanLines(file);
            return ImportOutcome{store.importBans(lines.bans, now), lines.bans.size(), lines.unreadable};
        },
        this,
        [this](const ImportOutcome &lines) {
            outcome = u"%1 of %2 taken over, the others were in the book already."_s.arg(
                QString::number(lines.taken), countOf(lines.read, u"ban"_s, u"bans"_s));
            if (lines.unreadable > 0)
                outcome += u" "_s + countOf(lines.unreadable, u"line is"_s, u"lines are"_s) +
                           u" not a GUID and a name, and left out."_s;
            offer();
            reload();
        },
        [this] { say(u"Nothing has been taken over: the book could not be written."_s); });
}

void BookBansPage::cmdbanexport_Click()
{
    const QString name =
        askReplacedFile(services.prompts, {u"Save file as..."_s, u"ban"_s, u"txt"_s, u"Export bans"_s});
    if (name.isEmpty())
        return;
    book.ask([](BookStore &store) { return banLines(store.bans()); }, this,
             [this, name](const QByteArray &lines) {
                 if (const std::optional<Fault> fault = replaceFile(name, lines))
                     tellUnwritten(services.prompts, *fault, u"Bans not written"_s);
             });
}
