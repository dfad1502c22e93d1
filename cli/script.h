// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>

/// One thing after the other.
struct ScriptStep {
    enum class Kind { Command, Query, Sleep };

    Kind kind = Kind::Command;
    QString command;
    std::chrono::milliseconds pause{}; ///< of `Sleep`

    bool operator==(const ScriptStep &) const = default;
};

/// Reads commands, one a line. Blanks around a command are no part of it; empty lines, and those that begin with "#",
/// are left out; "sleep SECONDS" is a pause. Throws WrongUsage, which names the line that cannot be sent.
[[nodiscard]] QList<ScriptStep> readScript(const QString &text);

/// The commands as they are. Throws WrongUsage when one cannot be sent.
[[nodiscard]] QList<ScriptStep> stepsOf(const QStringList &commands);

/// Whether a server that reads 1,023 bytes of a request, as many do, reads only a part of this one with its password.
[[nodiscard]] bool mayBeCut(const QString &command, const QString &password);
