// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Game type and map of a server, as far as its replies have told them.
class KnownGame final {
public:
    /// Empty when it is not known.
    [[nodiscard]] const QString &type() const { return gameType; }
    [[nodiscard]] const QString &map() const { return mapName; }
    /// The game type when it was told together with this map: with another map another may have come.
    [[nodiscard]] QString typeOfMap() const { return mapOfType == mapName ? gameType : QString(); }

    /// Looks into a reply; false when it tells nothing of this.
    bool takeReply(const QString &reply);
    /// A command is about to be sent. One that changes the game or the map makes what is known void, and true comes
    /// back.
    bool takeCommand(const QString &comm);

private:
    QString gameType;
    QString mapName;
    QString mapOfType;
};
