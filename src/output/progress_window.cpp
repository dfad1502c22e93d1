// SPDX-License-Identifier: MIT
#include "progress_window.h"
#include "ui_progress_window.h"

#include <QApplication>
#include <QWindow>

ProgressWindow::ProgressWindow()
    : QWidget(nullptr, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowDoesNotAcceptFocus),
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
    if (owner) {
        winId(); // makes the window, so that it can belong to its owner's
        windowHandle()->setTransientParent(owner->windowHandle());
        move(owner->frameGeometry().center() - rect().center());
    }
    QWidget *active = QApplication::activeWindow();
    show();
    // Some platforms activate every new window, whatever it asks for.
    if (active)
        active->activateWindow();
}
