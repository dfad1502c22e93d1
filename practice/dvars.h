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
};

/// All variables of a server, found by name without regard to case and listed by name.
class Dvars final {
public:
    /// The game's own variables with their stock values; those of the Heat of Battle mod too when `hob`.
    [[nodiscard]] static Dvars stock(bool hob);

    [[nodiscard]] const Dvar *find(const QString &name) const;
    [[nodiscard]] QString value(const QString &name) const;
    [[nodiscard]] int number(const QString &name) const; ///< 0 when it is none
    [[nodiscard]] qsizetype count() const { return m_dvars.size(); }

    /// Sets it whatever its flags and range say, and makes it when there is none of that name.
    void set(const QString &name, const QString &value);
    void add(const Dvar &dvar);
    void remove(const QString &name);

    /// What the console prints when `value` is assigned: nothing when that succeeds.
    [[nodiscard]] QString assign(const QString &name, const QString &value);

    /// The reply of "dvarlist"; an empty pattern lists all.
    [[nodiscard]] QString listing(QStringView pattern) const;
    /// The reply to the bare name of `dvar`.
    [[nodiscard]] static QString description(const Dvar &dvar);
    /// The variables with flag S, by name.
    [[nodiscard]] QList<Dvar> serverInfo() const;

private:
    QMap<QString, Dvar> m_dvars; ///< by lower-case name
};
