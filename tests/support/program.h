// SPDX-License-Identifier: MIT
#pragma once

#include "app/composition.h"
#include "fail_test.h"
#include "fast_clock.h"
#include "practice/practice_server.h"
#include "scripted_prompts.h"

#include <QTemporaryDir>

/// The whole program in a folder of its own: the real window, socket and files, a fast clock and a scripted person.
/// Boxes that nobody took fail the test.
class Program final {
public:
    /// `ini` is the settings file that the program finds.
    explicit Program(const QByteArray &ini = {});
    ~Program();
    Q_DISABLE_COPY_MOVE(Program)

    /// Shows the window and runs what start-up runs.
    void start();
    /// Fills the connection fields with the server's address and presses "Connect".
    void connectTo(const PracticeServer &server, const QString &password = QStringLiteral("practice"));

    /// The control, action, timer or window of that name; the test fails and ends when there is none.
    template <typename Object>
    [[nodiscard]] Object *find(const QString &name) const
    {
        auto *found = window.findChild<Object *>(name);
        if (!found)
            failTest(QStringLiteral("no object named ") + name);
        return found;
    }
    void click(const QString &button) const;
    void trigger(const QString &action) const;
    void setText(const QString &box, const QString &text) const;
    /// The text of a box, or the caption of a button.
    [[nodiscard]] QString text(const QString &box) const;
    [[nodiscard]] QStringList rows(const QString &list) const;

    /// The RCON pane's history, its lines ending in carriage return and line feed.
    [[nodiscard]] QString pane() const;
    /// The message list without the time stamps.
    [[nodiscard]] QStringList messages() const;
    /// The progress window, and its note with plain line feeds.
    [[nodiscard]] QWidget *progress() const;
    [[nodiscard]] QString note() const;

    /// What the connect button says.
    [[nodiscard]] bool isConnected() const;
    /// Presses "Server Info": whether the answer comes into the pane. It does not while a page gathers the replies.
    [[nodiscard]] bool showsRepliesOf(PracticeServer &server) const;
    /// Lets the refresh timer run out: whether the server is asked for the players. It is not while a page is at work.
    [[nodiscard]] bool isRefreshingFrom(const PracticeServer &server) const;

    [[nodiscard]] QByteArray file(const QString &name) const;
    void write(const QString &name, const QByteArray &bytes) const;

private:
    QTemporaryDir folder;
    QString before;

public:
    FastClock clock;
    ScriptedPrompts prompts;

private:
    Composition parts;

public:
    Session &session = parts.session;
    UDPClient &udpclient = parts.udpclient;
    Output &output = parts.output;
    Exchange &exchange = parts.exchange;
    Services &services = parts.services;
    MainWindow &window = parts.window;
};
