// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

class Fault;
class PlayerTable;
class PlayerView;
class QAbstractButton;
struct Dismissal;
struct Services;
struct WantedPlayer;

/// What the buttons do to the player who is selected. The command goes at once to the slot that the list names, and the
/// row goes whatever the server says.
class PlayerActions final {
public:
    /// Where he is selected, and what says how the list is to be read.
    struct Controls {
        PlayerTable &players;
        PlayerView &view;
        const QAbstractButton &queryMode;
        const QAbstractButton &withoutColours;
    };

    /// Hears of a command that gets rid of a player just before it is sent.
    using Acting = std::function<void(const WantedPlayer &wanted, const QString &command)>;

    /// Hears that such a command has had its time, whether it has gone out or not.
    using Acted = std::function<void(const QString &command)>;

    PlayerActions(const Services &services_, const Controls &controls, Acting acting_, Acted acted_)
        : services(services_), on(controls), acting(std::move(acting_)), acted(std::move(acted_))
    {
    }

    void dismiss(const Dismissal &dismissal);
    void message() const;
    /// Nothing when the person does not want to say anything to the player of that name.
    [[nodiscard]] std::optional<QString> askMessage(const QString &name) const;
    /// Takes out the row of that player, if he is in the list still.
    void dropRow(const QString &num, const QString &guid, const QString &name) const;
    void removeRow(int row) const;
    /// The name as the list shows it.
    [[nodiscard]] QString shownName(const QString &name) const;

private:
    void report(const Fault &fault, const Dismissal &dismissal, QLatin1StringView section) const;

    const Services &services;
    const Controls on;
    const Acting acting;
    const Acted acted;
    QStringList dismissals; ///< the commands that are under way, with their players
};
