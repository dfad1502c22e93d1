// SPDX-License-Identifier: MIT
#pragma once

#include "rotation_outlook.h"
#include "rotation_problems.h"

#include <QObject>
#include <QTime>

class Clock;

/// What the pages have read of the server that is connected, as far as a rotation is about it. It asks for nothing.
class KnownServer final : public QObject {
    Q_OBJECT

public:
    explicit KnownServer(const Clock &clock_) : clock(clock_) {}

    /// The maps that the server has listed; none before.
    [[nodiscard]] const QStringList &maps() const { return serverMaps; }
    [[nodiscard]] const TimeLimits &limits() const { return readLimits; }
    /// When they were read; null before.
    [[nodiscard]] QTime limitsReadAt() const { return readAt; }
    /// The maps of the game stand for the server's until it has listed them.
    [[nodiscard]] KnownNames names() const;

public slots:
    void takeMaps(const QStringList &maps);
    /// `listing` is the server's list of the game's variables.
    void takeVariables(const QString &listing);
    void forget();

signals:
    void changed();

private:
    const Clock &clock;
    QStringList serverMaps;
    QSet<QString> mapNames; ///< the same in lower case
    TimeLimits readLimits;
    QTime readAt;
};
