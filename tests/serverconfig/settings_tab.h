// SPDX-License-Identifier: MIT
#pragma once

#include "at_request.h"
#include "base/controls.h"
#include "connected_program.h"
#include "exchange_boxes.h"
#include "window_test.h"

#include <QLabel>
#include <QTabWidget>

/// One request, and how the program stood when it came.
struct Asked {
    QByteArray command;
    double seconds = 0;   ///< since midnight
    QString note;         ///< of the progress window
    QStringList messages; ///< since the last `forget`
};

inline PracticeOptions quickServer(quint32 seed = 1)
{
    PracticeOptions options;
    options.seed = seed;
    options.mapLoadMs = 0;
    return options;
}

inline Box notConnectedYetBox()
{
    return {QStringLiteral("Not Connected"), QStringLiteral("You need to connect to a server first"),
            BoxIcon::Exclamation, BoxButtons::Ok};
}

/// The program connected to a practice server whose maps load at once, when connecting is over and forgotten.
struct SettingsTab final : ConnectedProgram {
    explicit SettingsTab(const PracticeOptions &options = quickServer())
        : ConnectedProgram({.practice = options, .prepare = {}})
    {
        QObject::connect(&server, &PracticeServer::requested, &recorder, [this] {
            const QByteArray command = server.commands().constLast();
            if (ticksMeanwhile)
                refreshedMeanwhile = isRefreshing() || refreshedMeanwhile;
            asked.append({command, program.clock.secondsSinceMidnight(), program.note(), messages()});
        });
        forget();
    }

    void forget()
    {
        ConnectedProgram::forget();
        asked.clear();
        paneBefore = program.pane().size();
    }

    /// The commands since the last `forget`, once all that was sent before has come.
    [[nodiscard]] QList<QByteArray> commands()
    {
        const QByteArray probe = "probe";
        server.answer(probe, {"here\n"});
        program.exchange.sendinfo(QString::fromLatin1(probe), true);
        asked.removeIf([&](const Asked &each) { return each.command == probe; });
        QList<QByteArray> commands = server.commands();
        commands.removeAll(probe);
        return commands;
    }

    [[nodiscard]] QStringList messages() const { return lines(); }
    [[nodiscard]] QString pane() const { return program.pane().mid(paneBefore); }

    /// The commands that the pane echoes.
    [[nodiscard]] QList<QByteArray> echoed() const
    {
        static const QRegularExpression echo(QStringLiteral(">>RCON sent \\[[^]]*\\] \x18([^\x18]*)\x18\r\n"));
        QList<QByteArray> commands;
        const QString text = pane();
        for (const QRegularExpressionMatch &match : echo.globalMatch(text))
            commands.append(match.captured(1).toLatin1());
        return commands;
    }

    /// Sets the clock to a whole second, so that a wait for one second takes one.
    void startSecond() { program.clock.set(QDateTime(QDate(2006, 3, 5), QTime(12, 0))); }

    /// The smallest distance between two requests, in seconds.
    [[nodiscard]] double smallestGap() const
    {
        double smallest = 1e9;
        for (qsizetype later = 1; later < asked.size(); ++later)
            smallest = std::min(smallest, asked.at(later).seconds - asked.at(later - 1).seconds);
        return smallest;
    }

    [[nodiscard]] TextBox *text(const QString &name) const { return program.find<TextBox>(name); }
    [[nodiscard]] CheckBox *check(const QString &name) const { return program.find<CheckBox>(name); }
    [[nodiscard]] QList<Box> boxes() { return program.prompts.takeBoxes(); }

    QList<Asked> asked;
    bool ticksMeanwhile = false;     ///< the refresh timer runs out at every request
    bool refreshedMeanwhile = false; ///< and the server was asked for the players then

private:
    qsizetype paneBefore = 0;
    QObject recorder;
};

/// Brings the tab to the front that holds `control`.
inline void showTabOf(const Program &program, const QString &control)
{
    const auto *widget = program.find<QWidget>(control);
    auto *tabs = program.find<QTabWidget>(QStringLiteral("SSTab"));
    for (int page = 0; page < tabs->count(); ++page) {
        if (tabs->widget(page)->isAncestorOf(widget))
            tabs->setCurrentIndex(page);
    }
}

/// The label that stands for `control`.
inline QLabel *labelOf(const Program &program, const QString &control)
{
    const QWidget *widget = program.find<QWidget>(control);
    for (auto *label : program.window.findChildren<QLabel *>()) {
        if (label->buddy() == widget)
            return label;
    }
    failTest(QStringLiteral("no label for ") + control);
}
