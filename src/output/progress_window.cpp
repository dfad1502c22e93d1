// SPDX-License-Identifier: MIT
#include "progress_window.h"
#include "ui_progress_window.h"

#include "base/window_place.h"

#include <QApplication>
#include <QCloseEvent>

ProgressWindow::ProgressWindow()
    : QWidget(nullptr, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                           Qt::WindowDoesNotAcceptFocus),
      ui(std::make_unique<Ui::ProgressWindow>())
{
    ui->setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
}

ProgressWindow::~ProgressWindow() = default;

QString ProgressWindow::note() const
{
    return ui->txtprogress->toPlainText();
}

void ProgressWindow::setNote(const QString &note)
{
    ui->txtprogress->setPlainText(note);
}

void ProgressWindow::showOver(QWidget *owner)
{
    if (isVisible())
        return;
    QWidget *active = QApplication::activeWindow();
    if (owner)
        ::showOver(*this, *owner);
    else
        show();
    // Some platforms activate every new window, whatever it asks for.
    if (active)
        active->activateWindow();
}

void ProgressWindow::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    emit dismissed();
}
