// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringView>

#include <optional>

/// One variable of the game. Flags are letters out of "SURIALC": S told to everybody who asks for the status, U told by
/// clients, R read only, I set at the start only, A kept in the configuration, L taken up at the next map, C for
/// cheats.
struct Dvar {
    /// The whole numbers that a variable takes.
    struct Range {
        int lowest = 0;
        int highest = 0;
    };

    QString name;
    QString flags;
    QString value;
    QString stock; ///< the value after a fresh start
    std::optional<Range> range{};
    std::optional<QString> latched{}; ///< the value from the next map on
};

/// What became of an assignment.
struct Assignment {
    enum class Outcome { Refused, Latched, Done };

    Outcome outcome = Outcome::Done;
    QString reply; ///< what the console prints; empty when the value holds at once
};

/// All variables of a server, found by name without regard to case and listed by name.
class Dvars final {
public:
    /// The game's own variables with their stock values; those of the Heat of Battle mod too when `hob`.
    [[nodiscard]] static Dvars stock(bool hob);

    [[nodiscard]] const Dvar *find(const QString &name) const;
    [[nodiscard]] QString value(const QString &name) const;
    [[nodiscard]] int number(const QString &name) const; ///< 0 when it is none
    [[nodiscard]] qsizetype count() const { return byName.size(); }

    /// Sets it at once whatever its flags and range say, and makes it when there is none of that name.
    void set(const QString &name, const QString &value);
    void add(const Dvar &dvar);

    /// Assigns `value` as the console does: flags and range are minded, and with flag L the old value stays until
    /// `takeUpLatched`.
    Assignment assign(const QString &name, const QString &value);
    /// A new map: the latched values become the values.
    void takeUpLatched();

    /// The reply of "dvarlist"; an empty pattern lists all.
    [[nodiscard]] QString listing(QStringView pattern) const;
    /// The reply to the bare name of `dvar`.
    [[nodiscard]] static QString description(const Dvar &dvar);
    /// The variables with flag S, by name.
    [[nodiscard]] QList<Dvar> serverInfo() const;

private:
    QMap<QString, Dvar> byName; ///< by lower-case name
};
