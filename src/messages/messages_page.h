// SPDX-License-Identifier: MIT
#pragma once

#include "message_cycler.h"
#include "message_sets.h"

#include <QWidget>

#include <memory>

class IniText;
struct Services;

namespace Ui {
class MessagesPage;
}

/// The "Messages" tab: the editor of the sets of chat messages, and the controls of the cycler that says them.
class MessagesPage final : public QWidget {
    Q_OBJECT

public:
    MessagesPage(Services &services_, const PlaceholderVariables &variables, QWidget *parent = nullptr);
    ~MessagesPage() override;

    void load(const IniText &ini);
    /// Starts the cycler with the preferred interval, on the program's own initiative.
    void autoStart();
    [[nodiscard]] bool hasUnsavedSets() const;

public slots:
    /// Stops the message cycler if it runs.
    void endCycle();

signals:
    /// What the cycler says and when next; empty when it says nothing.
    void outlookchanged(const QString &outlook);
    /// Return was pressed in one of the two boxes that it leaves like the Tab key.
    void entered();

private:
    void wireEditor();
    void wireCycler();
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

    void showMessages();
    void showFreeSets(bool withSign);
    void setPending(bool on);
    [[nodiscard]] int selectedRow() const;

    Services &services;
    std::unique_ptr<Ui::MessagesPage> ui;
    MessageSets sets;
    MessageCycler cycler;
    bool editingmessage = false;
};
