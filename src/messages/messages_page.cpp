// SPDX-License-Identifier: MIT
#include "messages_page.h"
#include "ui_messages_page.h"

#include "base/fault.h"
#include "base/focus.h"
#include "base/numbers.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "colour_labels.h"
#include "output/output.h"
#include "rcon/services.h"
#include "rcon/session.h"
#include "serverconfig/chat_prefix.h"
#include "settings/ini_file.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

// At global scope, where the resource's own function is; a static library's resources are not found without it.
static void loadPictures()
{
    Q_INIT_RESOURCE(messages);
}

MessagesPage::MessagesPage(Services &services_, const PlaceholderVariables &variables, QWidget *parent)
    : QWidget(parent),
      services(services_),
      ui(std::make_unique<Ui::MessagesPage>()),
      cycler(services_, sets, variables, this)
{
    loadPictures();
    ui->setupUi(this);
    lockLine(ui->txtfreesets, true);
    showColourCodes({ui->lblcolour_0, ui->lblcolour_1, ui->lblcolour_2, ui->lblcolour_3, ui->lblcolour_4,
                     ui->lblcolour_5, ui->lblcolour_6, ui->lblcolour_7});
    wireEditor();
    wireCycler();
}

MessagesPage::~MessagesPage() = default;

void MessagesPage::wireEditor()
{
    const auto picture = [](const QString &name) { return QIcon(u":/messages/"_s + name + u".png"_s); };
    ui->imgup->setIcon(picture(u"up"_s));
    ui->imgdown->setIcon(picture(u"down"_s));
    ui->imgdel->setIcon(picture(u"delete"_s));
    connect(ui->imgup, &QToolButton::clicked, this, [this] { move(-1); });
    connect(ui->imgdown, &QToolButton::clicked, this, [this] { move(+1); });
    connect(ui->imgdel, &QToolButton::clicked, this, &MessagesPage::imgdel_Click);
    showPlaceholder(ui->lstmess);
    connect(ui->lstmess, &QListWidget::itemDoubleClicked, this, &MessagesPage::lstmess_DblClick);
    connect(ui->cmdsetdel, &QPushButton::clicked, this, &MessagesPage::cmdsetdel_Click);
    connect(ui->cmdsetsave, &QPushButton::clicked, this, &MessagesPage::cmdsetsave_Click);
    connect(ui->cmdsetdis, &QPushButton::clicked, this, &MessagesPage::discardsets);
    connect(ui->txtmess, &QLineEdit::returnPressed, this, &MessagesPage::entered);
    connect(ui->commessset->lineEdit(), &QLineEdit::returnPressed, this, &MessagesPage::entered);
    ui->lblpreview->follow(ui->txtmess, [](const QString &message) { return chatPrefix + message; });
    onLostFocus(ui->commessset, [this] { commessset_LostFocus(); });
    onLostFocus(ui->txtmess, [this] { txtmess_LostFocus(); });
}

void MessagesPage::wireCycler()
{
    ui->txtinterval->setDataChanged(false); // its initial text is nobody's edit
    cycler.setInterval(ui->txtinterval->text());
    connect(ui->txtinterval, &QLineEdit::textChanged, &cycler, &MessageCycler::setInterval);
    onLostFocus(ui->txtinterval, [this] { txtinterval_LostFocus(); });
    connect(ui->cmdmessstart, &QPushButton::clicked, this, &MessagesPage::cmdmessstart_Click);
    connect(ui->cmdmessstop, &QPushButton::clicked, &cycler, &MessageCycler::stop);
    connect(&cycler, &MessageCycler::runningchanged, ui->cmdmessstart, &QWidget::setDisabled);
    connect(&cycler, &MessageCycler::runningchanged, ui->cmdmessstop, &QWidget::setEnabled);
    connect(&cycler, &MessageCycler::outlookchanged, this, [this] { emit outlookchanged(cycler.outlook()); });
}

void MessagesPage::load(const IniText &ini)
{
    sets.load(ini);
    for (int slot = 0; slot < sets.setcount(); ++slot)
        ui->commessset->addItem(sets.name(slot));
    showFreeSets(true);
    if (ui->commessset->count() > 0) {
        ui->commessset->setCurrentIndex(0);
        commessset_LostFocus();
    }
}

bool MessagesPage::hasUnsavedSets() const
{
    return ui->cmdsetsave->isEnabled();
}

void MessagesPage::commessset_LostFocus()
{
    const QString name = ui->commessset->currentText();
    if (name.isEmpty())
        return;
    if (ui->commessset->entries().contains(name)) {
        sets.select(name);
        showMessages();
    } else if (sets.hasFreeSlot()) {
        createSet(name);
    } else {
        // A number is written with a place for its sign, so there are two blanks.
        services.prompts.inform(
            u"No free sets left,  %1 in use\rTo add new you must remove an old one"_s.arg(sets.setcount()),
            u"No Free Slots"_s);
    }
}

void MessagesPage::createSet(const QString &name)
{
    const Answer answer =
        services.prompts.ask({u"New Message Set"_s, u"Add new Set to list"_s, BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;
    ui->commessset->addItem(name);
    ui->commessset->setCurrentIndex(ui->commessset->count() - 1);
    sets.create(name);
    showFreeSets(true);
    ui->lstmess->clear();
    setPending(true);
}

void MessagesPage::cmdsetdel_Click()
{
    int chosen = static_cast<int>(ui->commessset->entries().indexOf(ui->commessset->currentText()));
    if (chosen < 0) {
        chosen = ui->commessset->count() - 1;
        ui->commessset->setCurrentIndex(chosen);
    }
    const QString name = ui->commessset->itemText(chosen);
    if (name.isEmpty()) {
        services.prompts.inform(u"No message set selected in Message Set field"_s, u"No set selected"_s);
        return;
    }
    const Answer answer =
        services.prompts.ask({u"Confirm Delete"_s, u"Are you sure you want to delete the set named:\r"_s + name,
                              BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel)
        return;

    sets.removeSet(name);
    ui->commessset->removeItem(chosen);
    ui->commessset->setCurrentIndex(-1);
    ui->commessset->clearEditText();
    ui->lstmess->clear();
    showFreeSets(false);
    services.output.addmessage(u"Set named "_s + name + u" removed."_s);
    ui->txtmess->clear();
    setPending(true);
    if (ui->commessset->count() == 0) {
        sets.resetCurrent();
        return;
    }
    ui->commessset->setCurrentIndex(std::max(chosen - 1, 0));
    sets.select(ui->commessset->currentText());
    showMessages(); // also while no window is active, just after a box, when leaving the combo box goes unnoticed
    ui->commessset->setFocus();
    pressTab(ui->commessset);
}

void MessagesPage::txtmess_LostFocus()
{
    if (ui->txtmess->text().isEmpty())
        return;
    const bool isNew = !std::exchange(editingmessage, false) || selectedRow() < 0; // what it replaced may be gone
    if (ui->txtmess->dataChanged() && isNew) {
        addMessage();
        return;
    }
    if (ui->txtmess->dataChanged())
        editMessage();
    ui->txtmess->clear();
}

// The focus goes back, so that several messages can be typed one after another.
void MessagesPage::addMessage()
{
    const QString message = ui->txtmess->text();
    ui->lstmess->addItem(message);
    sets.add(message);
    setPending(true);
    ui->txtmess->clear();
    ui->txtmess->setFocus();
}

void MessagesPage::editMessage()
{
    QListWidgetItem *entry = ui->lstmess->item(selectedRow());
    if (!sets.edit(entry->text(), ui->txtmess->text()))
        return;
    entry->setText(ui->txtmess->text());
    setPending(true);
}

void MessagesPage::lstmess_DblClick()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    ui->txtmess->setText(ui->lstmess->item(row)->text());
    editingmessage = true;
    ui->txtmess->setDataChanged(false);
    ui->txtmess->setFocus();
}

void MessagesPage::imgdel_Click()
{
    const int row = selectedRow();
    if (row < 0)
        return;
    delete ui->lstmess->takeItem(row);
    ui->lstmess->setCurrentRow(-1);
    // The row counts as the position, also when earlier deletions have left the two apart.
    sets.removeAt(row);
    setPending(true);
}

void MessagesPage::move(int by)
{
    const int row = selectedRow();
    const int target = row + by;
    if (row < 0 || target < 0 || target >= ui->lstmess->count())
        return;
    ui->lstmess->insertItem(target, ui->lstmess->takeItem(row));
    ui->lstmess->setCurrentRow(target);
    sets.swap(row, target); // likewise
    setPending(true);
}

void MessagesPage::cmdsetsave_Click()
{
    const Answer answer = services.prompts.ask(
        {u"Save Changes"_s, u"Save message sets to INI"_s, BoxIcon::Question, BoxButtons::OkCancel});
    if (answer == Answer::Cancel) {
        discardsets();
        return;
    }
    const Output::Work work(services.output);
    if (cycler.isRunning()) {
        services.output.showprogress(u"Stopping the active message Cycle to sync changes"_s, Progress::Replace);
        cycler.stop();
    }
    services.output.showprogress(u"Writing changes to INI file"_s, Progress::Add);
    writeSets();
    setPending(false);
    services.output.showprogress({}, Progress::Replace);
}

void MessagesPage::writeSets()
{
    sets.beginSave();
    if (services.ini.write(sets.entries())) {
        services.prompts.refuse(u"Failed to write to INI file, Please report bug and messages attempted"_s,
                                u"Failed to write INI"_s);
        return;
    }
    sets.endSave();
    showFreeSets(false);
}

void MessagesPage::discardsets()
{
    const Answer answer = services.prompts.ask(
        {u"Discard changes"_s, u"Discard changes and reset to existing"_s, BoxIcon::Question, BoxButtons::YesNo});
    if (answer == Answer::No)
        return;
    ui->lstmess->clear();
    ui->commessset->clear();
    ui->commessset->addItems(sets.discard());
    ui->commessset->setCurrentIndex(-1);
    ui->commessset->clearEditText();
    services.prompts.inform(u"Reverted back to existing messages"_s, u"Discarded changes"_s);
    setPending(false);
}

void MessagesPage::autoStart()
{
    const Preferences &options = services.session.options;
    ui->txtinterval->setText(QString::number(options.messagetime));
    ui->txtinterval->setDataChanged(false);
    ui->txtfreesets->setText(QString::number(options.messageset)); // shown there, and nothing more
    cycler.start(ui->commessset->currentText(), hasUnsavedSets(), true);
}

void MessagesPage::endCycle()
{
    if (cycler.isRunning())
        cycler.stop();
}

void MessagesPage::cmdmessstart_Click()
{
    cycler.start(ui->commessset->currentText(), hasUnsavedSets(), false);
}

void MessagesPage::txtinterval_LostFocus()
{
    if (!ui->txtinterval->dataChanged())
        return;
    ui->txtinterval->setDataChanged(false);
    const QString text = ui->txtinterval->text();
    if (isNumeric(text) && toNumber(text) >= 1 && toNumber(text) <= 10) {
        cycler.sendNext();
        return;
    }
    cycler.catchUp(minutesOf(text)); // what only begins with a number counts as that, although it is refused
    services.prompts.inform(isNumeric(text) ? u"Value between 1 and 10 minutes"_s
                                            : u"Value between 1 and 10 only please"_s,
                            u"Invalid Entry"_s);
    ui->txtinterval->setFocus();
}

void MessagesPage::showMessages()
{
    ui->lstmess->clear();
    ui->lstmess->addItems(sets.messages());
}

// Only some of the steps leave a place for the sign in front of the number.
void MessagesPage::showFreeSets(bool withSign)
{
    const QString number = QString::number(MessageSets::slotCount - sets.setcount());
    ui->txtfreesets->setText(withSign ? u' ' + number : number);
}

void MessagesPage::setPending(bool on)
{
    ui->cmdsetsave->setEnabled(on);
    ui->cmdsetdis->setEnabled(on);
}

int MessagesPage::selectedRow() const
{
    const QList<QListWidgetItem *> selected = ui->lstmess->selectedItems();
    return selected.isEmpty() ? -1 : ui->lstmess->row(selected.first());
}
