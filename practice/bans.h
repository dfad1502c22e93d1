// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

/// Who may not come in, and until when. A ban sticks to a player's guid, or to the address without its port where the
/// guid is "0" (as on a local network). Time is the game's own, in seconds.
class Bans final {
public:
    void add(const QString &guid, const QString &address);
    void addUntil(const QString &guid, const QString &address, qint64 second);
    [[nodiscard]] bool holds(const QString &guid, const QString &address, qint64 now) const;
    /// Drops the temporary bans that have run out.
    void expire(qint64 now);
    [[nodiscard]] qsizetype count() const { return ends.size(); }

private:
    QHash<QString, qint64> ends; ///< the second in which it ends
};
