// SPDX-License-Identifier: MIT
#include "mods_page.h"
#include "ui_mods_page.h"

ModsPage::ModsPage(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::ModsPage>())
{
    ui->setupUi(this);
    connect(ui->cmdhob, &QPushButton::clicked, this, &ModsPage::hobwanted);
}

ModsPage::~ModsPage() = default;
