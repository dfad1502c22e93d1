// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class Prompts;
class QModelIndex;
struct IniEntry;
struct SavedServers;

namespace Ui {
class SavedServersPanel;
}

/// The list of saved servers, and behind it, not shown, the list of their passwords, row for row.
class SavedServersPanel final : public QWidget {
    Q_OBJECT

public:
    explicit SavedServersPanel(Prompts &prompts_, QWidget *parent = nullptr);
    ~SavedServersPanel() override;

    /// Fills the lists as they were read from the settings file.
    void load(const SavedServers &saved);
    /// The keys to write into the settings file.
    [[nodiscard]] QList<IniEntry> entries() const;

    /// Adds the server, unless its address stands anywhere in a row already.
    void Saveserver_Click(const QString &server, const QString &port, const QString &password);
    /// Removes the first row that holds the address and the port.
    void removeserver_Click(const QString &server, const QString &port);

signals:
    void serverchosen(const QString &server, const QString &port, const QString &password);

private:
    void lstservers_Click();
    void showMenu(const QModelIndex &row, QPoint place);
    void useRow(int row);
    void copyRow(int row);
    void removeRow(int row);
    void addRow(const QString &server, const QString &port, const QString &password);

    Prompts &prompts;
    std::unique_ptr<Ui::SavedServersPanel> ui;
    qint32 servercount = 0; ///< saved servers found at start-up, plus those saved since
};
