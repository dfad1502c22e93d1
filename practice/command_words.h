// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// The words of the first line of `line`. Blanks and control characters part them; a double quote begins a word and
/// ends it, also without a blank in front of it, and between two quotes everything belongs to the word.
[[nodiscard]] QStringList commandWords(const QString &line);

/// The words from the one at `first` on, with single blanks between them.
[[nodiscard]] QString joinedFrom(const QStringList &words, qsizetype first);

/// Whether a variable of this name holds a password.
[[nodiscard]] bool holdsPassword(const QString &dvar);

/// `line` as it may be shown to bystanders: what is assigned to a variable that holds a password is left out.
[[nodiscard]] QString withoutSecrets(const QString &line);
