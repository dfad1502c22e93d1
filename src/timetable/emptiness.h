// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>

#include <optional>

/// How many players the public answer to "getstatus" names, which has a line for each; nothing when it is no such
/// answer.
[[nodiscard]] std::optional<int> playersIn(const QByteArray &answer);

/// Since when a server has been seen empty, time and again.
class Emptiness final {
public:
    /// What the server answered at that moment; nothing when it did not. One answer can be lost, the second one missing
    /// means that nothing is known any more. Nor is it when nobody has looked for long, as while the computer sleeps.
    void take(std::optional<int> players, const QDateTime &at);
    void forget() { *this = {}; }
    [[nodiscard]] const std::optional<QDateTime> &since() const { return begun; }

private:
    std::optional<QDateTime> begun;
    QDateTime lastTaken;
    int missing = 0;
};
