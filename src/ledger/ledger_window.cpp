// SPDX-License-Identifier: MIT
#include "ledger_window.h"
#include "ui_ledger_window.h"

#include "base/clock.h"
#include "base/context_menu.h"
#include "base/keys.h"
#include "base/list_views.h"
#include "base/prompts.h"
#include "base/replaced_file.h"
#include "ledger.h"
#include "ledger_filter.h"
#include "ledger_text.h"
#include "output/log_file.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextCursor>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Nobody reads more of a reply, and text without line ends takes seconds to lay out.
constexpr qsizetype longestShown = 100'000;
constexpr qsizetype longestLine = 2000;
constexpr int betweenRefreshes = 200; // milliseconds

/// `cell` without what would begin another cell or row where it is pasted.
QString oneCell(QString cell)
{
    for (const QChar separator : {u'\t', u'\r', u'\n'})
        cell.replace(separator, u' ');
    return cell;
}

/// `reply` as it is shown: not more of it than can be read, in lines that can be laid out.
QString shownText(const QString &reply)
{
    QString text;
    qsizetype inLine = 0;
    for (const QChar each : QStringView(reply).first(std::min(reply.size(), longestShown))) {
        inLine = each == u'\n' ? 0 : inLine + 1;
        if (inLine > longestLine) {
            text += u'\n';
            inLine = 1;
        }
        text += each;
    }
    return reply.size() > longestShown ? text + u"\n(the rest is not shown)"_s : text;
}

} // namespace

LedgerWindow::LedgerWindow(Ledger &ledger_, Prompts &prompts_, const Clock &clock_, QWidget *parent)
    : QWidget(parent),
      ledger(ledger_),
      prompts(prompts_),
      clock(clock_),
      ui(std::make_unique<Ui::LedgerWindow>()),
      filter(new LedgerFilter(ledger, this))
{
    ui->setupUi(this);
    formSize = size();
    tmrdetails.setObjectName(u"tmrdetails"_s);
    tmrdetails.setParent(this);
    tmrdetails.setSingleShot(true);
    connect(&tmrdetails, &QTimer::timeout, this, [this] {
        if (isReplyOld)
            refreshDetails();
    });
    setUpTable();
    ui->txtledgerreply->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)); // servers print tables
    addCloseKey(*this);
    connect(ui->txtledgerfilter, &QLineEdit::textChanged, filter, &LedgerFilter::setText);
    connect(ui->chkledgerbad, &QCheckBox::toggled, filter, &LedgerFilter::setOnlyBad);
    connect(ui->cmdledgercopy, &QPushButton::clicked, this, &LedgerWindow::cmdledgercopy_Click);
    connect(ui->cmdledgersave, &QPushButton::clicked, this, &LedgerWindow::cmdledgersave_Click);
    showDetails();
}

LedgerWindow::~LedgerWindow() = default;

void LedgerWindow::setUpTable()
{
    const QTableView &table = *ui->tblledger;
    showModel(*ui->tblledger, *filter, {9, 0, 7, 12, 10, 9, 17}); // the command takes what the others leave
    connect(table.selectionModel(), &QItemSelectionModel::selectionChanged, this, &LedgerWindow::showDetails);
    connect(table.selectionModel(), &QItemSelectionModel::currentChanged, this, &LedgerWindow::showDetails);
    connect(filter, &LedgerFilter::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
        const int row = ui->tblledger->currentIndex().row();
        if (from.row() <= row && row <= to.row())
            refreshDetails();
    });
    connect(filter, &LedgerFilter::rowsAboutToBeInserted, this, [this] {
        const QScrollBar *bar = ui->tblledger->verticalScrollBar();
        followsNewest = bar->value() == bar->maximum();
    });
    connect(filter, &LedgerFilter::rowsInserted, this, &LedgerWindow::followNewest, Qt::QueuedConnection);
    ui->tblledger->scrollToBottom();
}

void LedgerWindow::followNewest()
{
    if (followsNewest)
        ui->tblledger->scrollToBottom();
}

void LedgerWindow::showEntry(int number)
{
    const int row = ledger.rowOf(number);
    if (row < 0)
        return;
    QModelIndex place = filter->mapFromSource(ledger.index(row, 0));
    if (!place.isValid()) {
        ui->txtledgerfilter->clear();
        ui->chkledgerbad->setChecked(false);
        place = filter->mapFromSource(ledger.index(row, 0));
    }
    ui->tblledger->setCurrentIndex(place);
    ui->tblledger->selectRow(place.row());
    ui->tblledger->scrollTo(place);
}

// A long reply comes in hundreds of datagrams at once.
void LedgerWindow::refreshDetails()
{
    isReplyOld = true;
    if (tmrdetails.isActive() && !shownReply.isEmpty())
        return;
    showDetails();
    tmrdetails.start(betweenRefreshes);
}

void LedgerWindow::showDetails()
{
    isReplyOld = false;
    const QModelIndex current = filter->mapToSource(ui->tblledger->currentIndex());
    if (!current.isValid()) {
        shownNumber = 0;
        showReply({});
        ui->lblledgernote->setText(u"Choose a command to see what the server said to it."_s);
        return;
    }
    const LedgerEntry &entry = ledger.entry(current.row());
    if (entry.number != shownNumber)
        showReply({}); // or one that begins alike would not begin at its beginning
    shownNumber = entry.number;
    showReply(entry.isReplyForgotten ? u"(no longer kept)"_s : shownText(entry.reply));
    ui->lblledgernote->setText(ledgerNote(entry));
}

// What has grown is added to, so that it stays where the person reads.
void LedgerWindow::showReply(const QString &text)
{
    if (text == shownReply)
        return;
    if (!shownReply.isEmpty() && text.startsWith(shownReply)) {
        QTextCursor end(ui->txtledgerreply->document());
        end.movePosition(QTextCursor::End);
        end.insertText(text.sliced(shownReply.size()));
    } else {
        ui->txtledgerreply->setPlainText(text);
    }
    shownReply = text;
}

QList<int> LedgerWindow::shownRows() const
{
    QList<int> rows;
    for (int row = 0; row < filter->rowCount(); ++row)
        rows.append(filter->mapToSource(filter->index(row, 0)).row());
    return rows;
}

QList<int> LedgerWindow::copiedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : ui->tblledger->selectionModel()->selectedRows())
        rows.append(filter->mapToSource(index).row());
    std::ranges::sort(rows);
    return rows.isEmpty() ? shownRows() : rows;
}

void LedgerWindow::cmdledgercopy_Click()
{
    QStringList lines{ledgerHeaders().join(u'\t')};
    for (const int row : copiedRows()) {
        QStringList cells = ledgerRecord(ledger.entry(row));
        std::ranges::transform(cells, cells.begin(), oneCell);
        lines.append(cells.join(u'\t'));
    }
    copyText(lines.join(u'\n') + u'\n');
}

void LedgerWindow::cmdledgersave_Click()
{
    const QString name =
        askReplacedFile(prompts, {u"Save file as..."_s, u"molvark_ledger_"_s + logDate(clock.now().date()), u"csv"_s,
                                  u"Save as CSV"_s});
    if (name.isEmpty())
        return;
    QString text = csvRecord(ledgerHeaders());
    for (const int row : shownRows())
        text += csvRecord(ledgerRecord(ledger.entry(row)));
    if (const std::optional<Fault> fault = replaceTable(name, text))
        tellUnwritten(prompts, *fault, u"Ledger not written"_s);
}
