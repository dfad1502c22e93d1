// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class ModsPage;
}

/// The "Mods" tab: the way to the window with the server variables of the Heat of Battle mod.
class ModsPage final : public QWidget {
    Q_OBJECT

public:
    explicit ModsPage(QWidget *parent = nullptr);
    ~ModsPage() override;

signals:
    void hobwanted();

private:
    std::unique_ptr<Ui::ModsPage> ui;
};
