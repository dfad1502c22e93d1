// SPDX-License-Identifier: MIT
#include "book_servers_page.h"
#include "ui_book_servers_page.h"

#include "base/clock.h"
#include "base/prompts.h"
#include "base/replaced_file.h"
#include "book.h"
#include "book_store.h"
#include "rcon/services.h"

#include <QHash>
#include <QSignalBlocker>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<qint64, 3> spanDays{1, 7, 30};

/// The numbers of players, with a mark at each new map. What is to be said of many points is kept once.
PlotData countPlot(const QList<BookCount> &counts, qint64 from, qint64 to)
{
    PlotData plot;
    plot.from = from;
    plot.to = to;
    plot.unit = u"players"_s;
    QHash<QString, int> labels;
    QString map;
    for (const BookCount &count : counts) {
        const QString label = count.gameType.isEmpty() ? count.map : count.map + u", "_s + count.gameType;
        const auto known = labels.constFind(label);
        const int number = known == labels.constEnd() ? static_cast<int>(labels.size()) : *known;
        if (known == labels.constEnd()) {
            labels.insert(label, number);
            plot.labels.append(label);
        }
        plot.points.append({count.time, count.players, number});
        if (!map.isEmpty() && !count.map.isEmpty() && count.map != map)
            plot.marks.append({count.time, count.map});
        map = count.map.isEmpty() ? map : count.map;
    }
    return plot;
}

} // namespace

BookServersPage::BookServersPage(Book &book_, const Services &services_, QWidget *parent)
    : QWidget(parent), book(book_), services(services_), ui(std::make_unique<Ui::BookServersPage>())
{
    ui->setupUi(this);
    ui->cmdbookpng->setEnabled(false);
    connect(ui->combookserver, &QComboBox::currentIndexChanged, this, &BookServersPage::showCounts);
    connect(ui->combookspan, &QComboBox::currentIndexChanged, this, &BookServersPage::showCounts);
    connect(ui->cmdbookpng, &QPushButton::clicked, this, &BookServersPage::cmdbookpng_Click);
}

BookServersPage::~BookServersPage() = default;

void BookServersPage::reload(const QString &preferred)
{
    book.ask([](BookStore &store) { return store.servers(); }, this,
             [this, preferred](const QStringList &servers) { showServers(servers, preferred); });
}

void BookServersPage::showServers(const QStringList &servers, const QString &preferred)
{
    {
        const QSignalBlocker quiet(ui->combookserver);
        const QString before = ui->combookserver->currentText();
        QStringList listed;
        for (int row = 0; row < ui->combookserver->count(); ++row)
            listed.append(ui->combookserver->itemText(row));
        if (listed != servers) {
            ui->combookserver->clear();
            ui->combookserver->addItems(servers);
            const QString wanted = servers.contains(before) ? before : preferred;
            ui->combookserver->setCurrentIndex(std::max(0, static_cast<int>(servers.indexOf(wanted))));
        }
    }
    showCounts();
}

void BookServersPage::showCounts()
{
    const int mine = ++asked;
    const QString server = ui->combookserver->currentText();
    const qint64 to = services.clock.now().toSecsSinceEpoch();
    const qint64 from = to - secondsOfDay * spanDays.at(static_cast<std::size_t>(ui->combookspan->currentIndex()));
    book.ask([server, from, to](BookStore &store) { return countPlot(store.counts(server, from), from, to); }, this,
             [this, mine](const PlotData &plot) {
                 if (mine != asked)
                     return;
                 ui->pltbookserver->setData(plot);
                 ui->cmdbookpng->setEnabled(!ui->pltbookserver->isEmpty());
             });
}

void BookServersPage::clear()
{
    ++asked;
    const QSignalBlocker quiet(ui->combookserver);
    ui->combookserver->clear();
    ui->pltbookserver->clear();
    ui->cmdbookpng->setEnabled(false);
}

void BookServersPage::cmdbookpng_Click()
{
    const QString name =
        askReplacedFile(services.prompts, {u"Save file as..."_s, u"molvark_players"_s, u"png"_s, u"Save as PNG"_s});
    if (name.isEmpty())
        return;
    if (const std::optional<Fault> fault = replaceFile(name, ui->pltbookserver->png()))
        tellUnwritten(services.prompts, *fault, u"Picture not written"_s);
}
