// SPDX-License-Identifier: MIT
#pragma once

#include "base/fault.h"

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
