// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

/// Who may not come in, and until when. A ban sticks to a player's guid, or to the address without its port where the
/// guid is "0" (as on a local network). Time is the game's own, in seconds. A ban for good may bear the player's name,
/// by which it can be lifted.
class Bans final {
public:
    void add(const QString &guid, const QString &address, const QString &name = {});
    void addUntil(const QString &guid, const QString &address, qint64 second);
    [[nodiscard]] bool holds(const QString &guid, const QString &address, qint64 now) const;
    /// Whether a ban for good does.
    [[nodiscard]] bool holdsForGood(const QString &guid, const QString &address) const;
    /// Lifts all bans for good of that name, in any letter case, and returns how many they were.
    qsizetype lift(const QString &name);
    /// Drops the temporary bans that have run out.
    void expire(qint64 now);
    [[nodiscard]] qsizetype count() const { return bans.size(); }

private:
    struct Ban {
        qint64 end = 0; ///< the second
        QString name;
    };
    QHash<QString, Ban> bans;
};
