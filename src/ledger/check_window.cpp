// SPDX-License-Identifier: MIT
#include "check_window.h"
#include "ui_check_window.h"

#include "base/clock.h"
#include "base/context_menu.h"
#include "base/keys.h"
#include "rcon/server_fields.h"
#include "rcon/services.h"
#include "rcon/turn.h"

#include <QHideEvent>
#include <QShowEvent>

using namespace Qt::StringLiterals;

namespace {

CheckPace paceOf(const Services &services)
{
    const Turn turn(services);
    return {[turn] { return turn.left(); }, [turn] { turn.taken(); }};
}

} // namespace

CheckWindow::CheckWindow(const Services &services_, QWidget *parent)
    : QWidget(parent),
      services(services_),
      ui(std::make_unique<Ui::CheckWindow>()),
      runner(CheckPatience(), paceOf(services), this)
{
    ui->setupUi(this);
    addCloseKey(*this);
    connect(ui->cmdcheckagain, &QPushButton::clicked, this, &CheckWindow::begin);
    connect(ui->cmdcheckcopy, &QPushButton::clicked, this, &CheckWindow::cmdcheckcopy_Click);
    connect(&runner, &CheckRunner::stepped, this, &CheckWindow::show);
    connect(&runner, &CheckRunner::datagramsent, this, &CheckWindow::datagramsent);
    connect(&runner, &CheckRunner::datagramread, this, &CheckWindow::datagramread);
    connect(&runner, &CheckRunner::ended, this, [this] { ui->cmdcheckagain->setEnabled(true); });
}

CheckWindow::~CheckWindow() = default;

void CheckWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        begin();
}

void CheckWindow::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        runner.stop();
}

void CheckWindow::begin()
{
    ui->cmdcheckagain->setEnabled(false);
    ui->lststeps->clear();
    steps.clear();
    const ServerFields &fields = services.fields;
    heading = u"Connection check of %1, %2"_s.arg(fields.address(),
                                                  QLocale::c().toString(services.clock.now(), u"dd-MMM-yyyy hh:mm"_s));
    runner.start(fields.server(), fields.port(), fields.password());
}

void CheckWindow::show(const CheckStep &step)
{
    steps.append(step);
    ui->lststeps->addItem(step.result + u'\n' + step.advice);
    ui->lststeps->scrollToBottom();
}

void CheckWindow::cmdcheckcopy_Click()
{
    copyText(checkText(heading, steps));
}
