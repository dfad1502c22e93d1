// SPDX-License-Identifier: MIT
#pragma once

#include "base/controls.h"
#include "program.h"
#include "tests/rcon/at_request.h"
#include "tests/rcon/exchange_boxes.h"
#include "tests/rcon/game_replies.h"
#include "weapon_rows.h"
#include "window_test.h"

#include <QTabWidget>

/// The running program with the "Weapons" tab open, connected to a practice server that allows all weapons; what
/// connecting asked is forgotten.
struct WeaponsTab final {
    WeaponsTab()
    {
        if (!server.listen())
            qFatal("no port for the server");
        answerBriefly(server);
        program.start();
        program.find<QTabWidget>(QStringLiteral("SSTab"))->setCurrentIndex(3);
        program.connectTo(server);
        forget();
    }

    /// The server's own value.
    void put(const QString &box, const QString &value) { server.game().dvars().set(weaponRow(box).variable, value); }
    [[nodiscard]] QString value(const QString &box) { return server.game().dvars().value(weaponRow(box).variable); }
    void populate() const { program.click(QStringLiteral("cmdpopwep")); }
    /// What the server and the person have been told so far does not count any more.
    void forget()
    {
        server.forgetRequests();
        told = program.messages().size();
    }
    /// Lines in the message list since then.
    [[nodiscard]] QStringList lines() const { return program.messages().mid(told); }

    [[nodiscard]] CheckBox *box(const QString &name) const { return program.find<CheckBox>(name); }
    void click(const QString &name) const
    {
        QTest::mouseClick(box(name), Qt::LeftButton, {}, {8, box(name)->height() / 2});
    }
    /// The boxes that are ticked, and those that are marked as changed, in the order of reading.
    [[nodiscard]] QStringList ticked() const
    {
        return boxesThat([](const CheckBox *each) { return each->isChecked(); });
    }
    [[nodiscard]] QStringList changed() const
    {
        return boxesThat([](const CheckBox *each) { return each->dataChanged; });
    }

    PracticeServer server;
    Program program{keepsOutput};
    qsizetype told = 0;

private:
    template <typename Condition>
    [[nodiscard]] QStringList boxesThat(const Condition &condition) const
    {
        QStringList names;
        for (const QString &name : readingOrder()) {
            if (condition(box(name)))
                names.append(name);
        }
        return names;
    }
};

inline Box notConnectedPageBox()
{
    return {QStringLiteral("Not Connected"), QStringLiteral("You need to connect to a server first"),
            BoxIcon::Exclamation, BoxButtons::Ok};
}
