// SPDX-License-Identifier: MIT
#pragma once

#include "fault.h"

#include <QByteArray>
#include <QString>

#include <optional>

class Prompts;

/// How a file that is to be written is asked for.
struct FileQuestion {
    QString title;
    QString preset; ///< a name without its suffix
    QString suffix;
    QString replaceTitle; ///< of the box that asks about a file that is there and not empty
};

/// The name that the person chooses; empty when he cancels or wants the file that is there to stay.
[[nodiscard]] QString askReplacedFile(Prompts &prompts, const FileQuestion &question);

/// A fault when a device or a pipe has that name, which is no file to write to: opening one could wait for ever.
[[nodiscard]] std::optional<Fault> faultOfNoFile(const QString &name);
/// Replaces the file, or makes it, as a whole; an old one is left as it is when that fails, which is then what comes
/// back.
[[nodiscard]] std::optional<Fault> replaceFile(const QString &name, const QByteArray &bytes);
/// The box of a file that could not be written; `what` says what comes of that, "List not written".
void tellUnwritten(Prompts &prompts, const Fault &fault, const QString &what);
/// A table in text that every other program takes for UTF-8.
[[nodiscard]] std::optional<Fault> replaceTable(const QString &name, const QString &text);
