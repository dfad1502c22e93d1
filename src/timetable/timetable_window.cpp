// SPDX-License-Identifier: MIT
#include "timetable_window.h"
#include "ui_timetable_window.h"

#include "base/keys.h"
#include "base/placeholder.h"
#include "base/prompts.h"
#include "timetable.h"
#include "timetable_times.h"

#include <QHideEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

using namespace Qt::StringLiterals;

TimetableWindow::TimetableWindow(Timetable &timetable_, Prompts &prompts_, QWidget *parent)
    : QWidget(parent), timetable(timetable_), prompts(prompts_), ui(std::make_unique<Ui::TimetableWindow>())
{
    ui->setupUi(this);
    days = {ui->chkttday_0, ui->chkttday_1, ui->chkttday_2, ui->chkttday_3,
            ui->chkttday_4, ui->chkttday_5, ui->chkttday_6};
    addCloseKey(*this);
    showPlaceholder(ui->lsttimetable);
    showPlaceholder(ui->lstttresults);
    wireFields();
    connect(ui->cmdttadd, &QPushButton::clicked, this, &TimetableWindow::cmdttadd_Click);
    connect(ui->cmdttremove, &QPushButton::clicked, this, &TimetableWindow::cmdttremove_Click);
    connect(ui->cmdttrun, &QPushButton::clicked, this, &TimetableWindow::cmdttrun_Click);
    connect(&timetable, &Timetable::changed, this, &TimetableWindow::showState);
    connect(&timetable, &Timetable::resultschanged, this, &TimetableWindow::showResults);
    showLists();
    ui->lsttimetable->setCurrentRow(0);
    showList();
    showResults();
}

// The fields lose the focus while they are destroyed, and say so.
TimetableWindow::~TimetableWindow()
{
    for (const QWidget *field : findChildren<QWidget *>())
        field->disconnect(this);
}

// What is typed is taken when the person is done with a field, and not while he looks something up in another window:
// half a command is never sent.
void TimetableWindow::wireFields()
{
    connect(ui->lsttimetable, &QListWidget::currentRowChanged, this, [this] {
        if (!isShowing && take())
            showList();
    });
    for (QLineEdit *line : {ui->txtttname, ui->txttttime, ui->txtttminutes}) {
        connect(line, &QLineEdit::editingFinished, this, &TimetableWindow::take);
        connect(line, &QLineEdit::textChanged, this, &TimetableWindow::offerFields);
    }
    ui->txtttcommands->installEventFilter(this);
    connect(ui->comttwhen, &QComboBox::currentIndexChanged, this, [this] {
        offerFields();
        take();
    });
    connect(ui->chkttactive, &QCheckBox::toggled, this, &TimetableWindow::take);
    for (const QCheckBox *day : days)
        connect(day, &QCheckBox::toggled, this, &TimetableWindow::take);
}

bool TimetableWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui->txtttcommands && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            take();
    }
    return QWidget::eventFilter(watched, event);
}

void TimetableWindow::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous()) // as when the person makes it small
        take();
}

void TimetableWindow::showLists()
{
    const QScopedValueRollback showing(isShowing, true);
    const int current = ui->lsttimetable->currentRow();
    while (ui->lsttimetable->count() > timetable.lists().size())
        delete ui->lsttimetable->takeItem(ui->lsttimetable->count() - 1);
    for (int row = 0; row < timetable.lists().size(); ++row) {
        if (row >= ui->lsttimetable->count())
            ui->lsttimetable->addItem(QString());
        const TimedList &list = timetable.lists().at(row);
        ui->lsttimetable->item(row)->setText(list.isActive ? list.name : list.name + u" (off)"_s);
    }
    ui->lsttimetable->setCurrentRow(std::min(current, ui->lsttimetable->count() - 1));
}

void TimetableWindow::showList()
{
    shown = ui->lsttimetable->currentRow();
    const TimedList list = shown < 0 ? TimedList() : timetable.lists().at(shown);
    const QScopedValueRollback showing(isShowing, true);
    ui->txtttname->setText(list.name);
    ui->txtttcommands->setPlainText(list.commands.join(u'\n'));
    ui->chkttactive->setChecked(list.isActive);
    ui->comttwhen->setCurrentIndex(list.when);
    ui->txttttime->setText(list.time.toString(u"HH:mm"_s));
    for (std::size_t day = 0; day < days.size(); ++day)
        days.at(day)->setChecked(list.days.at(day));
    ui->txtttminutes->setText(QString::number(list.minutes));
    offerFields();
}

void TimetableWindow::offerFields()
{
    const bool isList = shown >= 0;
    for (QWidget *field : std::initializer_list<QWidget *>{ui->txtttname, ui->txtttcommands, ui->chkttactive,
                                                           ui->comttwhen, ui->cmdttremove})
        field->setEnabled(isList);
    const int when = ui->comttwhen->currentIndex();
    ui->txttttime->setEnabled(isList && when == TimedList::AtTime);
    for (QCheckBox *day : days)
        day->setEnabled(isList && when == TimedList::AtTime);
    ui->txtttminutes->setEnabled(isList && (when == TimedList::Every || when == TimedList::WhenEmpty));
    ui->lbltthint->setText(complaint());
    showState();
}

QString TimetableWindow::complaint() const
{
    if (shown < 0)
        return {};
    const int when = ui->comttwhen->currentIndex();
    if (when == TimedList::AtTime && !readTime(ui->txttttime->text()))
        return u"The time is written like 20:30; as it stands here the list is not sent."_s;
    if ((when == TimedList::Every || when == TimedList::WhenEmpty) && !readMinutes(ui->txtttminutes->text()))
        return u"The minutes are a number from 1 to %1; as they stand here the list is not sent."_s.arg(
            TimedList::mostMinutes);
    if (when == TimedList::AtTime && std::ranges::none_of(days, [](const QCheckBox *day) { return day->isChecked(); }))
        return u"No day is ticked, so the list is not sent by itself."_s;
    return {};
}

TimedList TimetableWindow::typed() const
{
    const TimedList &before = timetable.lists().at(shown);
    TimedList list;
    list.name = ui->txtttname->text();
    list.commands = ui->txtttcommands->toPlainText().split(u'\n');
    if (list.commands == QStringList{QString()})
        list.commands.clear();
    list.when = static_cast<TimedList::When>(ui->comttwhen->currentIndex());
    const auto time = readTime(ui->txttttime->text());
    const auto minutes = readMinutes(ui->txtttminutes->text());
    list.time = time.value_or(before.time);
    list.minutes = minutes.value_or(before.minutes);
    for (std::size_t day = 0; day < days.size(); ++day)
        list.days.at(day) = days.at(day)->isChecked();
    const bool isTimeWrong = list.when == TimedList::AtTime && !time;
    const bool isCountWrong = (list.when == TimedList::Every || list.when == TimedList::WhenEmpty) && !minutes;
    list.isActive = ui->chkttactive->isChecked() && !isTimeWrong && !isCountWrong;
    return list;
}

// False when the lists are another program's now, of which nothing has been typed.
bool TimetableWindow::take()
{
    if (isShowing || shown < 0)
        return true;
    const bool isTaken = timetable.change(shown, typed());
    if (isTaken)
        offerFields();
    else
        showTheirs();
    return isTaken;
}

void TimetableWindow::showAnew()
{
    shown = -1;
    showLists();
    showList();
}

// None of them is chosen, so that what the person was about to click does nothing to a list that he has not seen.
void TimetableWindow::showTheirs()
{
    {
        const QScopedValueRollback showing(isShowing, true);
        ui->lsttimetable->setCurrentRow(-1);
    }
    showAnew();
}

void TimetableWindow::showState()
{
    showLists();
    ui->lblttnext->setText(timetable.trouble().isEmpty() ? timetable.outlook() : timetable.trouble());
    ui->cmdttrun->setEnabled(shown >= 0 && timetable.isConnected());
}

void TimetableWindow::showResults()
{
    const QStringList results = timetable.results();
    const QScrollBar *bar = ui->lstttresults->verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum();
    ui->lstttresults->clear();
    ui->lstttresults->addItems(results);
    if (isAtEnd)
        ui->lstttresults->scrollToBottom();
}

void TimetableWindow::cmdttadd_Click()
{
    if (!take())
        return;
    if (!timetable.add({.name = u"List %1"_s.arg(timetable.lists().size() + 1)}))
        return showTheirs();
    ui->lsttimetable->setCurrentRow(ui->lsttimetable->count() - 1);
    ui->txtttname->setFocus(Qt::OtherFocusReason);
    ui->txtttname->selectAll();
}

void TimetableWindow::cmdttremove_Click()
{
    if (shown < 0 || !take())
        return;
    const int index = shown;
    const TimedList list = timetable.lists().at(index);
    const Answer answer = prompts.ask(
        {u"Timetable"_s, u"Remove the list \"%1\"?"_s.arg(list.name), BoxIcon::Question, BoxButtons::YesNo});
    if (answer != Answer::Yes || index != shown || timetable.lists().value(index) != list)
        return;
    shown = -1; // its fields are not taken any more
    if (timetable.remove(index))
        showAnew();
    else
        showTheirs();
}

void TimetableWindow::cmdttrun_Click()
{
    if (take() && shown >= 0)
        timetable.run(shown);
}
