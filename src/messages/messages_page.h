// SPDX-License-Identifier: MIT
#pragma once

#include "message_cycle.h"
#include "message_sets.h"
#include "serverconfig/placeholder_variables.h"

#include <QDate>
#include <QTimer>
#include <QWidget>

#include <memory>

class ConnectPanel;
struct Services;

namespace Ui {
class MessagesPage;
}

/// The "Messages" tab: the editor of the message sets, and the cycler that says a saved set's messages on the server.
class MessagesPage final : public QWidget {
    Q_OBJECT

public:
    MessagesPage(Services &services, const ConnectPanel &connectPanel_, PlaceholderVariables variables_,
                 QWidget *parent = nullptr);
    ~MessagesPage() override;

    void load(const IniText &ini);
    /// Starts the cycler with the preferred interval, on the program's own initiative.
    void autoStart();
    [[nodiscard]] bool hasUnsavedSets() const;

public slots:
    /// Stops the message cycler if it runs.
    void endCycle();

signals:
    /// Return was pressed in one of the two boxes that it leaves like the Tab key.
    void entered();

private:
    void wireEditor();
    void showColourCodes();
    void commessset_LostFocus();
    void createSet(const QString &name);
    void cmdsetdel_Click();
    void txtmess_LostFocus();
    void addMessage();
    void editMessage();
    void lstmess_DblClick();
    void imgdel_Click();
    void move(int by);
    void cmdsetsave_Click();
    void writeSets();
    void discardsets();

    void txtinterval_LostFocus();
    void cmdmessstart_Click();
    void cmdmessstop_Click();
    void tmrmessage_Timer();
    void sayNext();
    [[nodiscard]] QString askVariable(const QString &name);

    void showMessages();
    void showFreeSets(bool withSign);
    void setPending(bool on);
    void setCycling(bool on);
    [[nodiscard]] int selectedRow() const;

    Services &services;
    const ConnectPanel &connectPanel;
    const PlaceholderVariables variables;
    std::unique_ptr<Ui::MessagesPage> ui;
    MessageSets sets;
    MessageCycle cycle;
    int cycleset = -1; ///< slot of the saved set that is being said
    bool editingmessage = false;
    QDate tickingSince;
    QTimer tmrmessage;
};
