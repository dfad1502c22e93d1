// SPDX-License-Identifier: MIT
#pragma once

#include "connected_program.h"
#include "window_hands.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

inline const QString timetableFile = QStringLiteral("molvark-timetable.json");

/// The window of the timetable, as a person uses it.
struct TimetableHands : WindowHands {
    explicit TimetableHands(const Beginning &beginning = {}) : on(beginning) { open(); }

    void open() { WindowHands::open(on.program, QStringLiteral("mtimetable"), QStringLiteral("frmtimetable")); }
    void click(const QString &button) const { find<QAbstractButton>(button)->click(); }
    void type(const QString &line, const QString &text) const
    {
        auto *box = find<QLineEdit>(line);
        box->setText(text);
        emit box->editingFinished();
    }
    void add(const QString &name, const QStringList &commands, const QString &when = QStringLiteral("by hand")) const
    {
        click(QStringLiteral("cmdttadd"));
        type(QStringLiteral("txtttname"), name);
        find<QPlainTextEdit>(QStringLiteral("txtttcommands"))->setPlainText(commands.join(QLatin1Char('\n')));
        find<QComboBox>(QStringLiteral("comttwhen"))->setCurrentText(when);
    }
    void choose(int row) const { find<QListWidget>(QStringLiteral("lsttimetable"))->setCurrentRow(row); }
    void activate() const { find<QCheckBox>(QStringLiteral("chkttactive"))->setChecked(true); }
    /// The newest one.
    [[nodiscard]] QString result() const
    {
        const QStringList results = rows("lstttresults");
        return results.value(results.size() - 1);
    }
    [[nodiscard]] QString next() const { return find<QLabel>(QStringLiteral("lblttnext"))->text(); }
    [[nodiscard]] QString status() const
    {
        const auto *label = on.program.find<QLabel>(QStringLiteral("lbltimetable"));
        return label->isVisible() ? label->text() : QString();
    }
    [[nodiscard]] QByteArray file() const { return on.program.file(timetableFile); }
    /// Another program has written the file.
    void put(const QByteArray &bytes) const { on.program.write(timetableFile, bytes); }
    [[nodiscard]] QTimer *timer() const { return on.program.find<QTimer>(QStringLiteral("tmrtimetable")); }
    /// It is that time by now, and the timer has run out.
    void comes(const QDateTime &time)
    {
        on.program.clock.set(time);
        QMetaObject::invokeMethod(timer(), "timeout");
    }
    [[nodiscard]] QDateTime now() const { return on.program.clock.now(); }

    ConnectedProgram on;
};
