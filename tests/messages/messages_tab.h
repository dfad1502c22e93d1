// SPDX-License-Identifier: MIT
#pragma once

#include "connected_program.h"
#include "exchange_boxes.h"
#include "window_test.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

/// The settings file in which these sets are saved, each with its messages.
inline QByteArray setsFile(const QList<std::pair<QByteArray, QList<QByteArray>>> &sets)
{
    QByteArray text;
    for (qsizetype number = 0; number < sets.size(); ++number) {
        text += "[set" + QByteArray::number(number) + "]\r\nname=" + sets.at(number).first + "\r\n";
        const QList<QByteArray> &messages = sets.at(number).second;
        for (qsizetype message = 0; message < messages.size(); ++message)
            text += "mess" + QByteArray::number(message) + '=' + messages.at(message) + "\r\n";
    }
    return text;
}

/// Three sets: "Ann" with three messages, "Ben" with one, "Cem" with none.
inline QByteArray threeSets()
{
    return setsFile({{"Ann", {"a0", "a1", "a2"}}, {"Ben", {"b0"}}, {"Cem", {}}});
}

inline Box question(const QString &title, const QString &text, BoxButtons buttons = BoxButtons::OkCancel)
{
    return {title, text, BoxIcon::Question, buttons};
}

inline Box newSetBox()
{
    return question(QStringLiteral("New Message Set"), QStringLiteral("Add new Set to list"));
}
inline Box saveBox()
{
    return question(QStringLiteral("Save Changes"), QStringLiteral("Save message sets to INI"));
}
inline Box discardBox()
{
    return question(QStringLiteral("Discard changes"), QStringLiteral("Discard changes and reset to existing"),
                    BoxButtons::YesNo);
}
inline Box revertedBox()
{
    return {QStringLiteral("Discarded changes"), QStringLiteral("Reverted back to existing messages"),
            BoxIcon::Information, BoxButtons::Ok};
}

/// The running program with the "Messages" tab open, and what a person does there.
struct MessagesTab final : ConnectedProgram {
    explicit MessagesTab(const QByteArray &settings = {}, bool connected = false)
        : ConnectedProgram({.settings = settings, .tab = 6, .connects = connected})
    {
    }

    [[nodiscard]] QListWidget *list() const { return program.find<QListWidget>(QStringLiteral("lstmess")); }
    [[nodiscard]] QLineEdit *message() const { return program.find<QLineEdit>(QStringLiteral("txtmess")); }
    [[nodiscard]] QStringList messages() const { return program.rows(QStringLiteral("lstmess")); }
    [[nodiscard]] QStringList sets() const { return program.rows(QStringLiteral("commessset")); }
    [[nodiscard]] QString set() const { return program.text(QStringLiteral("commessset")); }
    [[nodiscard]] QString free() const { return program.text(QStringLiteral("txtfreesets")); }
    /// True when both buttons offer to deal with unsaved changes, false when neither does.
    [[nodiscard]] bool isPending() const
    {
        const bool saves = program.find<QAbstractButton>(QStringLiteral("cmdsetsave"))->isEnabled();
        if (saves != program.find<QAbstractButton>(QStringLiteral("cmdsetdis"))->isEnabled())
            failTest(QStringLiteral("only one of the two buttons is enabled"));
        return saves;
    }

    /// Goes to another control.
    void leave() const { program.find<QLineEdit>(QStringLiteral("txtPWD"))->setFocus(); }
    /// Writes a set's name into the combo box and leaves it.
    void choose(const QString &name) const
    {
        auto *combo = program.find<QComboBox>(QStringLiteral("commessset"));
        combo->setFocus();
        combo->lineEdit()->selectAll();
        QTest::keyClick(combo, Qt::Key_Delete);
        QTest::keyClicks(combo, name);
        leave();
    }
    /// Types into the message box, over what is there.
    void type(const QString &text) const
    {
        message()->setFocus();
        message()->selectAll();
        QTest::keyClick(message(), Qt::Key_Delete);
        QTest::keyClicks(message(), text);
    }
    void add(const QString &text) const
    {
        type(text);
        QTest::keyClick(message(), Qt::Key_Return);
    }
    void select(int row) const
    {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(list()->item(row)).center());
    }
    void doubleClick(int row) const
    {
        select(row);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(list()->item(row)).center());
    }
    void click(const QString &button) const
    {
        QTest::mouseClick(program.find<QAbstractButton>(button), Qt::LeftButton);
    }
    /// Saves and agrees to it.
    void save()
    {
        program.click(QStringLiteral("cmdsetsave"));
        if (program.prompts.takeBoxes() != QList<Box>{saveBox()})
            failTest(QStringLiteral("saving asks something else"));
    }
    /// The value of a key in the settings file.
    [[nodiscard]] QString saved(const QString &section, const QString &key) const
    {
        return program.services.ini.read(section, key, 1000);
    }
};
