// SPDX-License-Identifier: MIT
#pragma once

#include "at_request.h"
#include "base/controls.h"
#include "connected_program.h"
#include "exchange_boxes.h"
#include "weapon_rows.h"
#include "window_test.h"

/// The running program with the "Weapons" tab open, connected to a practice server that allows all weapons; what
/// connecting asked is forgotten.
struct WeaponsTab final : ConnectedProgram {
    WeaponsTab() : ConnectedProgram({.tab = 3}) {}

    /// The server's own value.
    void put(const QString &box, const QString &value) { server.game().dvars().set(weaponRow(box).variable, value); }
    [[nodiscard]] QString value(const QString &box) { return server.game().dvars().value(weaponRow(box).variable); }
    void populate() const { program.click(QStringLiteral("cmdpopwep")); }

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
        return boxesThat([](const CheckBox *each) { return each->dataChanged(); });
    }

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
