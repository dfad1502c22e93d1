// SPDX-License-Identifier: MIT
#pragma once

#include "rotation_text.h"

#include <QSet>
#include <QStringList>

/// What a server is known to have, in lower case.
struct KnownNames {
    QSet<QString> gametypes;
    QSet<QString> maps;
    bool areServersMaps = false; ///< the server has listed them; else they are those of the game
};

/// Why the game would not play a line as it is meant.
struct RotationProblem {
    int row = 0;
    QString reason;

    bool operator==(const RotationProblem &) const = default;
};

/// All problems with the lines, in their order; of one line there can be several.
[[nodiscard]] QList<RotationProblem> rotationProblems(const QList<RotationRow> &rows, const KnownNames &known);

/// How long the request is that sends the rotation, in bytes.
[[nodiscard]] qsizetype rotationSize(const QString &rotation, const QString &password);

/// The first of the lines that a server would not read whole because the request is too long; -1 when it reads all.
[[nodiscard]] int firstUnreadRow(const QList<RotationRow> &rows, const QString &password);
