// SPDX-License-Identifier: MIT
#include "rotation_window.h"
#include "ui_rotation_window.h"

#include "base/clock.h"
#include "base/context_menu.h"
#include "base/keys.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "base/wire_text.h"
#include "known_server.h"
#include "misc_page.h"
#include "preset_box.h"
#include "rcon/request_size.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "settings/ini_file.h"
#include "settings/whole_file.h"
#include "stock_game.h"

#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QShortcut>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString title = u"Map rotation"_s;
constexpr qint64 largestFile = 1024 * 1024;
constexpr qsizetype mostProblems = 200; // that are listed; a text that is no rotation has thousands
constexpr qsizetype mostMaps = 5000;    // that are offered; nobody looks for one among more

QString counted(qsizetype number)
{
    return QLocale(QLocale::English).toString(number);
}

/// Editors put a mark before a text in UTF-8; other texts are as the game writes them.
QString fileText(const QByteArray &bytes)
{
    constexpr QByteArrayView mark("\xef\xbb\xbf");
    return bytes.startsWith(mark) ? QString::fromUtf8(bytes.sliced(mark.size())) : fromAnsi(bytes);
}

} // namespace

RotationWindow::RotationWindow(const Services &services_, MiscPage &misc_, const KnownServer &known_, QWidget *parent)
    : QWidget(parent), services(services_), misc(misc_), known(known_), ui(std::make_unique<Ui::RotationWindow>())
{
    ui->setupUi(this);
    addCloseKey(*this);
    setUpList();
    wireButtons();
    presets = new PresetBox(
        {ui->comrotpreset, ui->cmdrotsave, ui->cmdrotdelete}, services.ini.beside(u"molvark-rotations.json"_s),
        services.prompts, [this] { return model.text(); }, this);
    connect(presets, &PresetBox::chosen, this, &RotationWindow::takeText);
    connect(presets, &PresetBox::done, ui->lblrotdone, &QLabel::setText);
    for (QListWidget *list : {ui->lstrotpreview, ui->lstrotproblems})
        showPlaceholder(list);
    ui->lstrotproblems->setWordWrap(true);
    for (const QLatin1StringView gametype : stockGameTypes)
        ui->comrotgametype->addItem(gametype);
    connect(&known, &KnownServer::changed, this, &RotationWindow::showKnown);
    showKnown();
}

RotationWindow::~RotationWindow() = default;

void RotationWindow::begin()
{
    if (const std::optional<QString> rotation = misc.serverRotation())
        model.setText(*rotation);
    showRotation(); // The time of day and the password may be others by now.
    ui->lblrotdone->clear();
    presets->list();
}

void RotationWindow::setUpList()
{
    QTreeView &list = *ui->lstrotation;
    list.setModel(&model);
    showPlaceholder(&list);
    const int letter = fontMetrics().horizontalAdvance(u'n');
    list.header()->resizeSection(RotationColumn::Line, 8 * letter);
    list.header()->resizeSection(RotationColumn::GameType, 14 * letter);
    connect(&model, &RotationModel::edited, this, [this](int first, int count) {
        showRotation();
        choose(first, count);
    });
    connect(&model, &RotationModel::refused, this, [this] {
        services.prompts.refuse(u"The rotation would be longer than any server reads. It stays as it was."_s, title);
    });
    connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, this, &RotationWindow::enableButtons);
    connect(&list, &QWidget::customContextMenuRequested, this, &RotationWindow::showMenu);
    onListKey(QKeySequence::Delete, [this] { model.remove(chosenLines()); });
    onListKey(QKeySequence::Undo, [this] { model.undo(); });
    onListKey(Qt::ALT | Qt::Key_Up, [this] { moveLines(-1); });
    onListKey(Qt::ALT | Qt::Key_Down, [this] { moveLines(+1); });
}

void RotationWindow::onListKey(const QKeySequence &keys, const std::function<void()> &handler)
{
    connect(new QShortcut(keys, ui->lstrotation, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
            handler);
}

void RotationWindow::wireButtons()
{
    connect(ui->cmdrotserver, &QPushButton::clicked, this, &RotationWindow::cmdrotserver_Click);
    connect(ui->cmdrotedit, &QPushButton::clicked, this, [this] { takeText(misc.editedRotation()); });
    connect(ui->cmdrotfile, &QPushButton::clicked, this, &RotationWindow::cmdrotfile_Click);
    connect(ui->cmdrotadd, &QPushButton::clicked, this, &RotationWindow::cmdrotadd_Click);
    connect(ui->comrotmap->lineEdit(), &QLineEdit::returnPressed, this, &RotationWindow::cmdrotadd_Click);
    connect(ui->cmdrotdouble, &QPushButton::clicked, this, [this] { model.duplicate(chosenLines()); });
    connect(ui->cmdrotremove, &QPushButton::clicked, this, [this] { model.remove(chosenLines()); });
    connect(ui->cmdrotundo, &QPushButton::clicked, this, [this] { model.undo(); });
    connect(ui->cmdrotcopy, &QPushButton::clicked, this, &RotationWindow::cmdrotcopy_Click);
    connect(ui->cmdrotconfig, &QPushButton::clicked, this, &RotationWindow::cmdrotconfig_Click);
    const auto chooseLine = [this](const QListWidgetItem *problem) { choose(problem->data(Qt::UserRole).toInt(), 1); };
    connect(ui->lstrotproblems, &QListWidget::itemClicked, this, chooseLine);
    connect(ui->lstrotproblems, &QListWidget::itemActivated, this, chooseLine);
}

void RotationWindow::takeText(const QString &rotation)
{
    if (rotation.size() > longestRotation)
        services.prompts.refuse(u"This text is too long for a map rotation."_s, title);
    else
        model.setText(rotation);
}

void RotationWindow::cmdrotserver_Click()
{
    if (const std::optional<QString> rotation = misc.serverRotation())
        model.setText(*rotation);
    else
        services.prompts.inform(u"The server has not told its rotation. Connect to it first."_s, title);
}

void RotationWindow::cmdrotfile_Click()
{
    const QString name = services.prompts.askFileToRead(u"Read a rotation from..."_s,
                                                        u"CFG files and texts (*.cfg *.txt);;All files (*)"_s);
    if (name.isEmpty())
        return;
    QByteArray bytes;
    if (const std::optional<Fault> fault = readWholeFile(name, largestFile, bytes)) {
        services.prompts.refuse(u"This file cannot be read: %1\r%2"_s.arg(fault->description(), name), title);
        return;
    }
    const QString rotation = rotationInFile(fileText(bytes));
    if (rotation.isEmpty() || rotation.size() > longestRotation)
        services.prompts.refuse(u"There is no map rotation in this file.\r"_s + name, title);
    else
        model.setText(rotation);
}

void RotationWindow::cmdrotadd_Click()
{
    const QString map = ui->comrotmap->currentText().trimmed();
    const QList<int> chosen = chosenLines();
    if (map.isEmpty())
        services.prompts.inform(u"Choose a map first"_s, title);
    else
        model.add(chosen.isEmpty() ? model.rowCount() : chosen.last() + 1, ui->comrotgametype->currentText().trimmed(),
                  map);
}

void RotationWindow::moveLines(int by)
{
    const QList<int> chosen = chosenLines();
    if (chosen.isEmpty())
        return;
    const int before = by < 0 ? chosen.first() - 1 : chosen.last() + 2;
    if (before >= 0 && before <= model.rowCount())
        model.move(chosen, before);
}

void RotationWindow::cmdrotcopy_Click()
{
    misc.editRotation(model.text());
    ui->lblrotdone->setText(u"Copied to EDIT. \"Set Server to EDIT\" on the tab \"Misc\" sends it."_s);
}

void RotationWindow::cmdrotconfig_Click()
{
    copyText(rotationConfigLine(model.text()));
    ui->lblrotdone->setText(u"The line for the server's CFG file is on the clipboard."_s);
}

void RotationWindow::showMenu(QPoint place)
{
    const bool any = !chosenLines().isEmpty();
    QMenu *menu = newContextMenu(ui->lstrotation);
    addMenuItem(menu, u"actrotdouble"_s, u"&Double"_s, any, [this] { ui->cmdrotdouble->click(); });
    addMenuItem(menu, u"actrotremove"_s, u"&Remove"_s, any, [this] { ui->cmdrotremove->click(); });
    addMenuItem(menu, u"actrotup"_s, u"Move &up"_s, any, [this] { moveLines(-1); });
    addMenuItem(menu, u"actrotdown"_s, u"Move do&wn"_s, any, [this] { moveLines(+1); });
    menu->popup(ui->lstrotation->viewport()->mapToGlobal(place));
}

void RotationWindow::showKnown()
{
    showMaps();
    const QTime at = known.limitsReadAt();
    ui->lblrotlimits->setText(
        at.isNull() ? u"Time limits have not been read; \"Populate from server\" on the tab \"Server\" reads them."_s
                    : u"By the time limits as they were read at %1, without the pauses between the maps."_s.arg(
                          at.toString(u"HH:mm"_s)));
    showRotation();
}

void RotationWindow::showMaps()
{
    const QString typed = ui->comrotmap->currentText();
    const QStringList server = known.maps();
    ui->comrotmap->clear();
    ui->comrotmap->addItems(server.first(std::min(server.size(), mostMaps)));
    QStringList stock = stockMaps();
    if (const KnownNames names = known.names(); names.areServersMaps)
        stock.removeIf([&names](const QString &map) { return names.maps.contains(map.toLower()); });
    if (!server.isEmpty() && !stock.isEmpty())
        ui->comrotmap->insertSeparator(ui->comrotmap->count());
    ui->comrotmap->addItems(stock);
    ui->comrotmap->setCurrentIndex(std::max(ui->comrotmap->findText(typed), 0));
    if (!typed.isEmpty())
        ui->comrotmap->setEditText(typed);
    if (server.isEmpty())
        ui->lblrotmaps->setText(
            u"The maps of the game; \"Populate from server\" on the tab \"Maps\" lists the server's."_s);
    else
        ui->lblrotmaps->setText(
            (server.size() > mostMaps ? u"The first %1 of the server's "_s.arg(counted(mostMaps))
                                      : u"The server's "_s) +
            u"%1 maps"_s.arg(counted(server.size())) +
            (stock.isEmpty() ? u"."_s : u"; below them those of the game that it does not have."_s));
}

void RotationWindow::showRotation()
{
    if (shownText != model.text())
        ui->lblrotdone->clear();
    shownText = model.text();
    ui->lstrotpreview->clear();
    ui->lstrotpreview->addItems(rotationOutlook(model.rows(), known.limits(), services.clock.now()));
    showProblems();
    showLength();
    enableButtons();
}

void RotationWindow::showProblems()
{
    QList<RotationProblem> problems = rotationProblems(model.rows(), known.names());
    if (const int row = firstUnreadRow(model.rows(), services.fields.password()); row >= 0)
        problems.append({row, u"too long: the server would not read this line whole, nor those behind it"_s});
    model.mark(problems);
    if (problems == shownProblems)
        return; // What is being clicked at stays.
    shownProblems = problems;
    ui->lstrotproblems->clear();
    for (const auto &[row, reason] : problems.first(std::min(problems.size(), mostProblems))) {
        auto *item = new QListWidgetItem(u"Line %1: %2"_s.arg(row + 1).arg(reason), ui->lstrotproblems);
        item->setData(Qt::UserRole, row);
    }
    if (problems.size() > mostProblems) {
        auto *item = new QListWidgetItem(u"and %1 more"_s.arg(problems.size() - mostProblems), ui->lstrotproblems);
        item->setData(Qt::UserRole, problems.at(mostProblems).row);
    }
}

void RotationWindow::showLength()
{
    const qsizetype size = rotationSize(model.text(), services.fields.password());
    ui->lblrotlength->setText(
        u"The request has %1 of the %2 bytes that a server reads"_s.arg(counted(size), counted(longestRequest)) +
        (size > longestRequest ? u": too long"_s : QString()));
}

void RotationWindow::enableButtons()
{
    const bool any = ui->lstrotation->selectionModel()->hasSelection();
    ui->cmdrotdouble->setEnabled(any);
    ui->cmdrotremove->setEnabled(any);
    ui->cmdrotundo->setEnabled(model.canUndo());
}

void RotationWindow::choose(int first, int count)
{
    QItemSelection lines;
    if (count > 0)
        lines.select(model.index(first, 0), model.index(first + count - 1, RotationColumn::Count - 1));
    if (count > 0)
        ui->lstrotation->selectionModel()->setCurrentIndex(model.index(first, 0), QItemSelectionModel::NoUpdate);
    ui->lstrotation->selectionModel()->select(lines, QItemSelectionModel::ClearAndSelect);
    enableButtons();
}

QList<int> RotationWindow::chosenLines() const
{
    QList<int> lines;
    for (const QModelIndex &index : ui->lstrotation->selectionModel()->selectedRows())
        lines.append(index.row());
    std::ranges::sort(lines);
    return lines;
}

void RotationWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        showRotation();
}
